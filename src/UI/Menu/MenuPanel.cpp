#include "UI/Menu/MenuPanel.h"

#include "Base/Completion.h"
#include "Base/Task.h"
#include "UI/Menu/MenuBarView.h"
#include "UI/Style/Appearance.h"

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

/// Between the panel and the icon, and between the panel and the edges of the screen, in logical pixels.
constexpr int gap = 6;

int within(int value, int lowest, int highest)
{
    return std::max(lowest, std::min(value, highest));
}

using Perform = std::shared_ptr<std::function<void(MenuAction)>>;

QCoro::Task<void> performAfter(QFuture<void> closed, Perform perform, MenuAction action)
{
    co_await closed;
    (*perform)(action);
}

PanelOptions panelOptions()
{
    PanelOptions options;
    options.canBecomeKey = true;
    return options;
}

} // namespace

QRect menuPanelFrame(const Screen &screen, std::optional<QRect> icon, QPoint pointer, QSize size)
{
    const QRect room = screen.visibleFrame.adjusted(gap, gap, -gap, -gap);
    const int lastLeft = room.x() + room.width() - size.width();
    const int lastTop = room.y() + room.height() - size.height();
    const QPoint middle = screen.frame.center();
    if (!icon) {
        return {QPoint(pointer.x() < middle.x() ? room.x() : std::max(room.x(), lastLeft),
                       pointer.y() < middle.y() ? room.y() : std::max(room.y(), lastTop)),
                size};
    }
    const int top =
        icon->center().y() < middle.y() ? icon->y() + icon->height() + gap : icon->y() - gap - size.height();
    return {QPoint(within(icon->x() + (icon->width() - size.width()) / 2, room.x(), lastLeft),
                   within(top, room.y(), lastTop)),
            size};
}

MenuPanel::MenuPanel(const ViewContext &context, PanelWindowFactory makeWindow, std::shared_ptr<ScreenSource> screens,
                     std::shared_ptr<FrontmostFocus> focus, std::function<void(MenuAction)> perform)
    : m_context(context),
      m_makeWindow(std::move(makeWindow)),
      m_screens(std::move(screens)),
      m_focus(std::move(focus)),
      m_perform(std::make_shared<std::function<void(MenuAction)>>(std::move(perform)))
{
}

MenuPanel::~MenuPanel() = default;

bool MenuPanel::isOpen() const
{
    return m_panel && m_panel->isVisible();
}

void MenuPanel::toggle(std::optional<QRect> icon)
{
    if (isOpen()) {
        close();
    } else {
        open(icon);
    }
}

void MenuPanel::open(std::optional<QRect> icon)
{
    if (!m_panel || !qFuzzyCompare(m_textScale, Appearance::textScale())) {
        make();
    }
    // Permissions may have been granted or revoked without notice.
    m_context.permissions->refresh();
    m_view->refresh();
    m_view->setDetailed(false);
    m_icon = icon;
    m_pointer = m_screens->mouseLocation();
    m_screen = screenUnderPointer(*m_screens);
    place();
    m_focus->remember();
    m_panel->orderFrontRegardless();
    m_view->focusFirstRow();
}

void MenuPanel::openWithDetails()
{
    open(std::nullopt);
    m_view->setDetailed(true);
    place();
}

/// In the size of the system's font, which may have changed since.
void MenuPanel::make()
{
    m_textScale = Appearance::textScale();
    m_view = new MenuBarView(m_context, [this](MenuAction action) { choose(action); });
    m_panel = m_makeWindow(panelOptions(), m_view);
    m_view->setOnSizeChanged([this] {
        if (isOpen()) {
            place();
        }
    });
}

void MenuPanel::place()
{
    if (m_screen) {
        m_panel->setFrame(menuPanelFrame(*m_screen, m_icon, m_pointer, m_view->sizeHint()));
    }
}

QFuture<void> MenuPanel::close()
{
    if (!isOpen()) {
        return makeReadyFuture();
    }
    m_panel->orderOut();
    return m_focus->returned();
}

void MenuPanel::choose(MenuAction action)
{
    logEscapes(performAfter(close(), m_perform, action));
}

} // namespace talmo
