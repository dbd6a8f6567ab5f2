#include "UI/Settings/SettingsWindow.h"

#include "Base/Task.h"
#include "UI/Settings/SettingsView.h"
#include "UI/Settings/WelcomeView.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/FocusRing.h"
#include "UI/Style/Wording.h"

#include <QEvent>
#include <QShortcut>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

constexpr int idealWidth = 540;
/// Allows for the window manager's frame and a small margin.
constexpr int airBeside = 60;
constexpr int airAbove = 24;
/// Most window managers place the frame where the window was to be.
constexpr int titleBarHeight = 36;

} // namespace

SettingsWindow::SettingsWindow(const ViewContext &context, std::shared_ptr<ScreenSource> screens)
    : m_context(context),
      m_screens(std::move(screens)),
      m_view(new SettingsView(context)),
      m_textScale(Appearance::textScale())
{
    setWindowTitle(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Talmo Settings")));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view);
    new FocusRing(this); // Belongs to the window.
    for (const auto &keys : {QKeySequence(Qt::Key_Escape), QKeySequence(QKeySequence::Close)}) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, &QWidget::close);
    }
}

void SettingsWindow::openWelcome()
{
    m_view->hide();
    m_welcome = new WelcomeView(m_context, [this] { close(); });
    layout()->addWidget(m_welcome);
    setWindowTitle(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Welcome to Talmo")));
    present();
    m_welcome->setFocus();
}

void SettingsWindow::endWelcome()
{
    if (m_welcome == nullptr) {
        return;
    }
    m_welcome->hide();
    m_welcome->deleteLater(); // Its own button may be what closes the window.
    m_welcome = nullptr;
    m_view->show();
    setWindowTitle(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Talmo Settings")));
}

void SettingsWindow::closeEvent(QCloseEvent *event)
{
    QWidget::closeEvent(event);
    hide(); // First, so that the settings are not shown, and read aloud, for a moment.
    endWelcome();
}

void SettingsWindow::open()
{
    endWelcome();
    present();
}

void SettingsWindow::openRecogniser()
{
    open();
    m_view->showRecogniser();
}

/// The views take the size of the system's font when they are made, so they are made again.
void SettingsWindow::followFont()
{
    const qreal scale = Appearance::textScale();
    if (qFuzzyCompare(std::exchange(m_textScale, scale), scale)) {
        return;
    }
    auto *before = std::exchange(m_view, new SettingsView(m_context));
    before->hide(); // Stops what it only does while shown, such as listening.
    m_view->showPage(before->page());
    m_view->setVisible(m_welcome == nullptr);
    layout()->addWidget(m_view);
    delete before;
    if (m_welcome != nullptr) {
        m_welcome->hide();
        delete m_welcome;
        m_welcome = new WelcomeView(m_context, [this] { close(); });
        layout()->addWidget(m_welcome);
    }
    place();
}

void SettingsWindow::present()
{
    m_context.permissions->refresh();
    refreshAvailability();
    m_view->refresh();
    if (!isVisible()) {
        place();
        setFocus(); // To the window rather than a control: the first press of Tab then reaches the first control.
    }
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
}

void SettingsWindow::place()
{
    const int width = Appearance::scaled(idealWidth);
    const QSize idealSize(width, m_welcome != nullptr ? m_welcome->idealHeight(width) : m_view->idealHeight(width));
    const auto screen = screenUnderPointer(*m_screens);
    if (!screen) {
        resize(idealSize);
        return;
    }
    const QRect visible = screen->visibleFrame;
    const QSize size = idealSize.boundedTo(visible.size() - QSize(airBeside, airAbove + titleBarHeight));
    resize(size);
    move(visible.center() - QPoint(size.width() / 2, (size.height() + titleBarHeight) / 2));
}

void SettingsWindow::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::ApplicationFontChange ||
        event->type() == QEvent::FontChange) { // Deferred: the views that are removed receive this signal as well.
        QMetaObject::invokeMethod(this, &SettingsWindow::followFont, Qt::QueuedConnection);
    }
    // A user who returns from setting up a model expects to see it.
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        refreshAvailability();
    }
    QWidget::changeEvent(event);
}

void SettingsWindow::refreshAvailability()
{
    logEscapes(refreshAfter(m_context.refreshAvailability(), this));
}

QCoro::Task<void> SettingsWindow::refreshAfter(QFuture<void> refreshed, QPointer<SettingsWindow> self)
{
    co_await refreshed;
    if (self) {
        self->m_view->refresh();
    }
}

} // namespace talmo
