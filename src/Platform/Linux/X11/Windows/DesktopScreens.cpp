#include "Platform/Linux/X11/Windows/DesktopScreens.h"

#include "Platform/Linux/X11/Windows/ScreenStruts.h"
#include "Platform/Linux/X11/XConnection.h"
#include "Platform/Linux/X11/XProperty.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>

#include <vector>

namespace talmo {

namespace {

/// Of all windows known to the window manager, requested in one batch.
QList<Strut> readStruts()
{
    auto *connection = applicationConnection();
    const auto windows = xNumbers(xProperty(connection, applicationRoot(), applicationAtom("_NET_CLIENT_LIST")));
    const auto name = applicationAtom("_NET_WM_STRUT_PARTIAL");
    constexpr quint32 fields = 12;
    std::vector<xcb_get_property_cookie_t> cookies;
    cookies.reserve(static_cast<std::size_t>(windows.size()));
    for (const auto window : windows) {
        cookies.push_back(xcb_get_property(connection, 0, window, name, XCB_ATOM_CARDINAL, 0, fields));
    }
    QList<Strut> struts;
    for (const auto cookie : cookies) {
        const XcbPtr<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, nullptr));
        if (reply) {
            struts.append(strutsFromProperty(
                xNumbers(QByteArray::fromRawData(static_cast<const char *>(xcb_get_property_value(reply.get())),
                                                 xcb_get_property_value_length(reply.get())))));
        }
    }
    return struts;
}

/// Qt keeps a screen's position in device pixels and scales only its size.
QRect inDevicePixels(const QScreen &screen)
{
    return {screen.geometry().topLeft(), screen.geometry().size() * screen.devicePixelRatio()};
}

Screen describe(const QScreen &screen, const QList<Strut> &struts)
{
    const auto *root = xcb_setup_roots_iterator(xcb_get_setup(applicationConnection())).data;
    const QRect device = inDevicePixels(screen);
    // The size from the connection's setup may be outdated; the screens' own sizes are not.
    QRect desktop(0, 0, root->width_in_pixels, root->height_in_pixels);
    if (const auto all = QGuiApplication::screens(); !all.isEmpty()) {
        desktop = QRect();
        for (const auto *each : all) {
            desktop |= inDevicePixels(*each);
        }
    }
    const QRect free = withoutStruts(device, QSize(desktop.right() + 1, desktop.bottom() + 1), struts);
    const qreal ratio = screen.devicePixelRatio();
    const QPoint corner = screen.geometry().topLeft();
    const QPointF offset = QPointF(free.topLeft() - corner) / ratio;
    return {screen.geometry(), QRect(corner + offset.toPoint(), (QSizeF(free.size()) / ratio).toSize())};
}

} // namespace

DesktopScreens::DesktopScreens()
{
    if (qGuiApp != nullptr) {
        connect(qGuiApp, &QGuiApplication::screenAdded, this, [this] { Q_EMIT screenAdded(); });
    }
}

QList<Screen> DesktopScreens::screens() const
{
    const auto struts = readStruts();
    QList<Screen> result;
    for (const auto *screen : QGuiApplication::screens()) {
        result.append(describe(*screen, struts));
    }
    return result;
}

std::optional<Screen> DesktopScreens::mainScreen() const
{
    const auto *screen = QGuiApplication::primaryScreen();
    return screen != nullptr ? std::optional(describe(*screen, readStruts())) : std::nullopt;
}

QPoint DesktopScreens::mouseLocation() const
{
    return QCursor::pos();
}

} // namespace talmo
