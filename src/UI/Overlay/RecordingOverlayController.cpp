#include "UI/Overlay/RecordingOverlayController.h"

#include "UI/Overlay/RecordingOverlay.h"
#include "UI/Style/Appearance.h"

#include <utility>

namespace talmo {

namespace {

QSize smallestSize()
{
    return {Appearance::scaled(RecordingOverlay::smallestWidth), RecordingOverlayController::smallestHeight};
}

} // namespace

RecordingOverlayController::RecordingOverlayController(TalmoCoordinator &coordinator, PanelWindowFactory makeWindow,
                                                       std::shared_ptr<ScreenSource> screens,
                                                       std::shared_ptr<DictationNotice> notice)
    : m_coordinator(coordinator),
      m_makeWindow(std::move(makeWindow)),
      m_screens(std::move(screens)),
      m_notice(std::move(notice))
{
    QObject::connect(m_screens.get(), &ScreenSource::screenAdded, &m_receiver, [this] { placeIfStillUnplaced(); });
}

RecordingOverlayController::~RecordingOverlayController() = default;

void RecordingOverlayController::show()
{
    if (!m_panel) {
        m_content = new RecordingOverlay(m_coordinator, m_notice);
        m_panel = std::make_unique<OverlayPanel>(
            m_makeWindow, OverlayPanel::options(m_content->largestSize().expandedTo(smallestSize())), m_content);
        m_content->setOnIdealSizeChanged([this] { followContent(); });
    }
    // The content may not have seen the change that caused this call yet.
    m_content->refresh();
    position(m_panel->window());
    m_panel->window().orderFrontRegardless();
}

void RecordingOverlayController::hide()
{
    if (m_panel) {
        m_panel->window().orderOut();
    }
}

QSize RecordingOverlayController::clampedContentSize() const
{
    return m_content->idealSize().expandedTo(smallestSize());
}

void RecordingOverlayController::position(PanelWindow &panel)
{
    const auto screen = screenUnderPointer(*m_screens);
    m_isPlaced = screen.has_value();
    if (!screen) {
        return;
    }
    const QRect visible = screen->visibleFrame;
    m_doubledMiddle = 2 * visible.x() + visible.width();
    m_bottom = visible.y() + visible.height() - distanceFromBottom;
    panel.setFrame(frameFor(clampedContentSize()));
}

QRect RecordingOverlayController::frameFor(QSize size) const
{
    // Stored doubled: rounding half pixels at each step would make a growing card drift.
    return QRect(QPoint((m_doubledMiddle - size.width()) / 2, m_bottom - size.height()), size);
}

/// Resizes the card with its content, keeping its bottom edge and its horizontal centre.
void RecordingOverlayController::followContent()
{
    if (m_isPlaced && m_panel->window().isVisible()) {
        m_panel->window().setFrame(frameFor(clampedContentSize()));
    }
}

void RecordingOverlayController::placeIfStillUnplaced()
{
    if (!m_isPlaced && m_panel && m_panel->window().isVisible()) {
        position(m_panel->window());
        m_panel->window().orderFrontRegardless();
    }
}

} // namespace talmo
