#include "Platform/Linux/X11/Windows/X11PanelWindow.h"

#include "Platform/Linux/X11/XConnection.h"
#include "Platform/Linux/X11/XProperty.h"
#include "UI/Overlay/OverlayPanel.h"
#include "UI/Style/Card.h"
#include "UI/Style/Wording.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QRegion>

#include <array>

namespace talmo {

namespace {

Qt::WindowFlags flagsFor(const PanelOptions &options)
{
    Qt::WindowFlags flags = Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint;
    if (options.canBecomeKey) {
        return flags | Qt::Popup;
    }
    flags |= Qt::Tool | Qt::WindowDoesNotAcceptFocus | Qt::WindowTransparentForInput;
    if (options.level >= OverlayPanel::floatingLevel) {
        flags |= Qt::WindowStaysOnTopHint | Qt::BypassWindowManagerHint;
    }
    return flags;
}

/// Whether a compositor is running: without one, translucent pixels come out black.
bool isScreenComposited()
{
    auto *connection = applicationConnection();
    const auto cookie = xcb_get_selection_owner(connection, applicationAtom("_NET_WM_CM_S0"));
    const XcbPtr<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(connection, cookie, nullptr));
    return reply && reply->owner != XCB_NONE;
}

} // namespace

X11PanelWindow::X11PanelWindow(const PanelOptions &options, QWidget *content)
    : QWidget(nullptr, flagsFor(options)),
      m_options(options),
      m_content(content),
      m_frame(options.contentRect)
{
    setAttribute(Qt::WA_TranslucentBackground, !options.isOpaque);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_NoMouseReplay); // A click outside the menu closes it and has no other effect.
    setAttribute(Qt::WA_QuitOnClose, false);
    content->setParent(this);
    content->show();
    if (options.canBecomeKey) {
        setFocusProxy(content);
    }
    setAccessibleName(Wording::text(QT_TRANSLATE_NOOP("Talmo", "Talmo"))); // The content names what changes.
}

X11PanelWindow::~X11PanelWindow()
{
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

std::unique_ptr<PanelWindow> X11PanelWindow::make(const PanelOptions &options, QWidget *content)
{
    return std::make_unique<X11PanelWindow>(options, content);
}

void X11PanelWindow::setFrame(const QRect &frame)
{
    if (frame != m_frame) {
        m_frame = frame;
        layOut();
    }
}

/// If the content has a largest size, the window is created with that and never resized: a growing card then needs no
/// new window contents from the server and cannot flicker. Like the card, the window keeps its bottom edge and its
/// horizontal centre.
void X11PanelWindow::layOut()
{
    const QSize size = m_options.largestContentSize.expandedTo(m_frame.size());
    const int widthOver = size.width() - m_frame.width();
    const QRect room(QPoint(m_frame.x() - widthOver / 2, m_frame.y() - (size.height() - m_frame.height())), size);
    constexpr int margin = Card::shadowMargin;
    setGeometry(room.adjusted(-margin, -margin, margin, margin));
    m_content->setGeometry(cardInWindow());
    applyShape();
    update();
}

QRect X11PanelWindow::cardInWindow() const
{
    return m_frame.translated(-geometry().topLeft());
}

void X11PanelWindow::applyShape()
{
    if (m_isComposited) {
        clearMask();
    } else {
        setMask(Card::shape(cardInWindow()));
    }
}

/// Declares the window's margin as its shadow to compositors that draw shadows themselves.
void X11PanelWindow::declareShadow()
{
    const QRect card = cardInWindow();
    const qreal ratio = devicePixelRatioF();
    const auto device = [ratio](int length) { return static_cast<quint32>(qRound(length * ratio)); };
    const std::array<quint32, 4> extents = {device(card.x()), device(width() - card.x() - card.width()),
                                            device(card.y()), device(height() - card.y() - card.height())};
    xcb_change_property(applicationConnection(), XCB_PROP_MODE_REPLACE, static_cast<xcb_window_t>(winId()),
                        applicationAtom("_GTK_FRAME_EXTENTS"), XCB_ATOM_CARDINAL, 32, extents.size(), extents.data());
}

void X11PanelWindow::orderFrontRegardless()
{
    m_isComposited = isScreenComposited();
    layOut();
    declareShadow();
    show();
    raise();
}

void X11PanelWindow::orderOut()
{
    hide();
}

void X11PanelWindow::showEvent(QShowEvent *event)
{
    QCoreApplication::instance()->installNativeEventFilter(this);
    QWidget::showEvent(event);
}

void X11PanelWindow::hideEvent(QHideEvent *event)
{
    QCoreApplication::instance()->removeNativeEventFilter(this);
    QWidget::hideEvent(event);
}

/// Raises the card again when another window is raised while it is shown.
bool X11PanelWindow::nativeEventFilter(const QByteArray & /*eventType*/, void *message, qintptr * /*result*/)
{
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    constexpr quint8 sentBySomebody = 0x80;
    if ((event->response_type & ~sentBySomebody) == XCB_PROPERTY_NOTIFY) {
        const auto *change = static_cast<const xcb_property_notify_event_t *>(message);
        if (change->window == applicationRoot() && (change->atom == applicationAtom("_NET_ACTIVE_WINDOW") ||
                                                    change->atom == applicationAtom("_NET_CLIENT_LIST_STACKING"))) {
            raise();
        }
    }
    return false;
}

void X11PanelWindow::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    if (m_isComposited) {
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(rect(), Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
    Card::paint(painter, cardInWindow(), palette(), m_isComposited);
}

void X11PanelWindow::mousePressEvent(QMouseEvent *event)
{
    if (m_options.canBecomeKey && !cardInWindow().contains(event->position().toPoint())) {
        hide();
    }
}

void X11PanelWindow::keyPressEvent(QKeyEvent *event)
{
    if (m_options.canBecomeKey && event->key() == Qt::Key_Escape) {
        hide();
    }
}

} // namespace talmo
