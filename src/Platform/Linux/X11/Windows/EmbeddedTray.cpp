#include "Platform/Linux/X11/Windows/EmbeddedTray.h"

#include "Platform/Linux/X11/XConnection.h"
#include "Platform/Linux/X11/XProperty.h"

#include <QApplication>
#include <QWidget>

#include <cstring>

namespace talmo {

namespace {

const char *const trayAtom = "_NET_SYSTEM_TRAY_S0";

/// The tray window that icons are embedded into; XCB_NONE if there is none.
xcb_window_t xEmbedTray()
{
    auto *connection = applicationConnection();
    const auto cookie = xcb_get_selection_owner(connection, applicationAtom(trayAtom));
    const XcbPtr<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(connection, cookie, nullptr));
    return reply ? reply->owner : XCB_NONE;
}

/// The window that Qt draws an embedded icon into; XCB_NONE while the icon is not embedded.
xcb_window_t embeddedIcon()
{
    for (const auto *widget : QApplication::topLevelWidgets()) {
        if (widget->inherits("QSystemTrayIconSys") && widget->isVisible()) {
            return static_cast<xcb_window_t>(widget->winId());
        }
    }
    return XCB_NONE;
}

/// The tray's background, sampled at a corner of the icon where nothing is drawn. It is read from the tray's own
/// window, since another window may cover it on the screen. None if the tray is translucent.
std::optional<QColor> groundOfEmbeddedIcon()
{
    auto *connection = applicationConnection();
    const auto icon = embeddedIcon();
    const XcbPtr<xcb_query_tree_reply_t> tree(
        icon != XCB_NONE ? xcb_query_tree_reply(connection, xcb_query_tree(connection, icon), nullptr) : nullptr);
    if (!tree || tree->parent == tree->root) {
        return std::nullopt;
    }
    constexpr quint32 allPlanes = ~quint32(0);
    const auto cookie = xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, tree->parent, 0, 0, 1, 1, allPlanes);
    const XcbPtr<xcb_get_image_reply_t> image(xcb_get_image_reply(connection, cookie, nullptr));
    QRgb pixel = 0;
    if (!image || xcb_get_image_data_length(image.get()) < int(sizeof(pixel))) {
        return std::nullopt;
    }
    std::memcpy(&pixel, xcb_get_image_data(image.get()), sizeof(pixel));
    constexpr int translucentDepth = 32;
    constexpr int halfOpaque = 128;
    const bool isSeenThrough = image->depth == translucentDepth && qAlpha(pixel) < halfOpaque;
    return isSeenThrough ? std::nullopt : std::optional(QColor(pixel));
}

} // namespace

EmbeddedTray::EmbeddedTray()
{
    QCoreApplication::instance()->installNativeEventFilter(this);
}

EmbeddedTray::~EmbeddedTray()
{
    QCoreApplication::instance()->removeNativeEventFilter(this);
}

bool EmbeddedTray::hasTray() const
{
    return xEmbedTray() != XCB_NONE;
}

QList<quint32> EmbeddedTray::colours() const
{
    const auto tray = xEmbedTray();
    return tray == XCB_NONE
               ? QList<quint32>()
               : xNumbers(xProperty(applicationConnection(), tray, applicationAtom("_NET_SYSTEM_TRAY_COLORS")));
}

std::optional<QColor> EmbeddedTray::background() const
{
    return groundOfEmbeddedIcon();
}

/// A new tray announces itself to every client of the root window.
bool EmbeddedTray::nativeEventFilter(const QByteArray & /*eventType*/, void *message, qintptr * /*result*/)
{
    const auto *event = static_cast<const xcb_generic_event_t *>(message);
    constexpr quint8 sentByClient = 0x80;
    const int type = event->response_type & ~sentByClient;
    if (type == XCB_EXPOSE) {
        Q_EMIT exposed();
    } else if (type == XCB_CLIENT_MESSAGE) {
        const auto *announcement = static_cast<const xcb_client_message_event_t *>(message);
        if (announcement->type == applicationAtom("MANAGER") &&
            announcement->data.data32[1] == applicationAtom(trayAtom)) {
            Q_EMIT trayAppeared();
        }
    }
    return false;
}

} // namespace talmo
