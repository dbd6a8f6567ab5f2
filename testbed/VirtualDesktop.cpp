#include "VirtualDesktop.h"

#include "SettingsFile.h"

#include "Base/Error.h"
#include "DesktopParts.h"
#include "Platform/Linux/X11/XProperty.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <poll.h>

#include <csignal>
#include <cstring>

namespace talmo::testbed {

namespace {

using namespace std::chrono_literals;

/// The client window within a window manager's frame, which may have a class of its own: the first one with a WM_STATE.
xcb_window_t managedWindow(XConnection &connection, xcb_window_t frame)
{
    const XcbPtr<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection.get(), xcb_query_tree(connection.get(), frame), nullptr));
    for (int index = 0; tree && index < xcb_query_tree_children_length(tree.get()); ++index) {
        const auto child = xcb_query_tree_children(tree.get())[index];
        if (!xProperty(connection.get(), child, connection.atom("WM_STATE")).isEmpty()) {
            return child;
        }
        if (const auto client = managedWindow(connection, child); client != XCB_NONE) {
            return client;
        }
    }
    return XCB_NONE;
}

/// Waits for any event on the connection; false on timeout.
bool waitForEvent(XConnection &connection, std::chrono::steady_clock::time_point deadline)
{
    while (true) {
        if (const XcbPtr<xcb_generic_event_t> event{xcb_poll_for_event(connection.get())}) {
            return true;
        }
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        pollfd descriptor{connection.fileDescriptor(), POLLIN, 0};
        if (left.count() <= 0 || poll(&descriptor, 1, static_cast<int>(left.count())) <= 0) {
            return false;
        }
    }
}

} // namespace

VirtualDesktop::VirtualDesktop(const QStringList &serverArguments, WindowManager windowManager)
    : m_environment(privateEnvironment(m_folder.path())),
      m_previousDisplay(qgetenv("DISPLAY"))
{
    m_environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    m_environment.insert(QStringLiteral("GDK_BACKEND"), QStringLiteral("x11"));
    m_environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    storeSettings({{QStringLiteral("linux.languageModelAddress"), QStringLiteral("off")}});
    startServer(serverArguments);
    m_connection = std::make_unique<XConnection>();
    followActiveWindow();
    if (windowManager == WindowManager::Openbox) {
        startWindowManager();
    }
}

void VirtualDesktop::storeSettings(const QJsonObject &settings)
{
    writeTalmoSettings(m_folder.path(), settings);
}

VirtualDesktop::~VirtualDesktop()
{
    m_connection.reset();
    m_windowManager.reset();
    m_server.reset();
    qputenv("DISPLAY", m_previousDisplay);
}

void VirtualDesktop::signalServer(int signal)
{
    ::kill(static_cast<pid_t>(m_server->processId()), signal);
}

void VirtualDesktop::startServer(const QStringList &arguments)
{
    m_server = std::make_unique<ChildProcess>(QStringLiteral("Xvfb"),
                                              QStringList{QStringLiteral("-displayfd"), QStringLiteral("1"),
                                                          QStringLiteral("-screen"), QStringLiteral("0"),
                                                          QStringLiteral("1024x640x24"), QStringLiteral("-nolisten"),
                                                          QStringLiteral("tcp"), QStringLiteral("-noreset")} +
                                                  arguments,
                                              m_environment);
    // The server prints its display number once it is ready, and no other line of digits.
    QString number;
    const bool isReady = waitUntil(
        [this, &number] {
            for (const auto &line : m_server->lines()) {
                bool isNumber = false;
                line.text.toInt(&isNumber);
                number = isNumber ? line.text : number;
            }
            return !number.isEmpty() || !m_server->isRunning();
        },
        20s);
    if (!isReady || number.isEmpty()) {
        throw Error(QStringLiteral("Xvfb did not start: ") + m_server->output());
    }
    const QString display = QLatin1Char(':') + number;
    m_environment.insert(QStringLiteral("DISPLAY"), display);
    qputenv("DISPLAY", display.toLatin1());
}

void VirtualDesktop::followActiveWindow()
{
    constexpr quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection->get(), m_connection->root(), XCB_CW_EVENT_MASK, &events);
    m_connection->flush();
}

bool VirtualDesktop::waitForWindowManager(Timeout timeout)
{
    return pollUntil(
        [this] {
            return !xProperty(m_connection->get(), m_connection->root(), m_connection->atom("_NET_SUPPORTING_WM_CHECK"))
                        .isEmpty();
        },
        timeout);
}

void VirtualDesktop::startWindowManager()
{
    // Openbox runs this command at the end of its start; a window that opens earlier is only adopted and gets no focus.
    const QString ready = QStringLiteral("window-manager-is-ready");
    m_windowManager = std::make_unique<ChildProcess>(
        QStringLiteral("openbox"), QStringList{QStringLiteral("--startup"), QStringLiteral("echo ") + ready},
        m_environment);
    if (!m_windowManager->waitForLine(ready, 20s)) {
        throw Error(QStringLiteral("openbox did not start: ") + m_windowManager->output());
    }
}

xcb_window_t VirtualDesktop::activeWindow()
{
    const QByteArray active =
        xProperty(m_connection->get(), m_connection->root(), m_connection->atom("_NET_ACTIVE_WINDOW"));
    xcb_window_t window = XCB_NONE;
    if (active.size() >= qsizetype(sizeof(window))) { // Some window managers append a zero.
        std::memcpy(&window, active.constData(), sizeof(window));
    }
    return window;
}

void VirtualDesktop::minimiseActiveWindow()
{
    constexpr quint32 iconic = 3;
    xcb_client_message_event_t request = {};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = activeWindow();
    request.type = m_connection->atom("WM_CHANGE_STATE");
    request.data.data32[0] = iconic;
    xcb_send_event(m_connection->get(), 0, m_connection->root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char *>(&request));
    xcb_flush(m_connection->get());
}

QString VirtualDesktop::activeWindowTitle()
{
    const auto window = activeWindow();
    const XcbPtr<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(m_connection->get(), xcb_get_input_focus(m_connection->get()), nullptr));
    const bool hasFocus = focus && focus->focus > XCB_INPUT_FOCUS_POINTER_ROOT && focus->focus != m_connection->root();
    return window != XCB_NONE && hasFocus ? QString::fromUtf8(xProperty(m_connection->get(), window, XCB_ATOM_WM_NAME))
                                          : QString();
}

bool VirtualDesktop::waitForActiveWindow(const QString &title, Timeout timeout)
{
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (!activeWindowTitle().contains(title)) {
        if (!waitForEvent(*m_connection, deadline)) {
            return activeWindowTitle().contains(title);
        }
    }
    return true;
}

int VirtualDesktop::takeActiveWindowChanges()
{
    activeWindowTitle(); // Events from before the reply are in the queue by then.
    int changes = 0;
    while (const XcbPtr<xcb_generic_event_t> event{xcb_poll_for_event(m_connection->get())}) {
        if (event->response_type == XCB_PROPERTY_NOTIFY) {
            const auto *change = reinterpret_cast<const xcb_property_notify_event_t *>(event.get());
            changes += change->atom == m_connection->atom("_NET_ACTIVE_WINDOW") ? 1 : 0;
        }
    }
    return changes;
}

QList<VirtualDesktop::Window> VirtualDesktop::visibleWindows()
{
    QList<Window> windows;
    auto *connection = m_connection->get();
    const XcbPtr<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, m_connection->root()), nullptr));
    for (int index = 0; tree && index < xcb_query_tree_children_length(tree.get()); ++index) {
        const auto window = xcb_query_tree_children(tree.get())[index];
        const XcbPtr<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(connection, xcb_get_window_attributes(connection, window), nullptr));
        const XcbPtr<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr));
        if (attributes && geometry && attributes->map_state == XCB_MAP_STATE_VIEWABLE) {
            const auto client = managedWindow(*m_connection, window);
            const auto shown = client != XCB_NONE ? client : window;
            windows.append({xProperty(connection, shown, XCB_ATOM_WM_CLASS).split('\0').value(0), client != XCB_NONE,
                            QRect(geometry->x, geometry->y, geometry->width, geometry->height)});
        }
    }
    return windows;
}

QImage VirtualDesktop::screenshot()
{
    const auto width = m_connection->screen().width_in_pixels;
    const auto height = m_connection->screen().height_in_pixels;
    const auto cookie = xcb_get_image(m_connection->get(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_connection->root(), 0, 0, width,
                                      height, ~quint32(0));
    const XcbPtr<xcb_get_image_reply_t> reply(xcb_get_image_reply(m_connection->get(), cookie, nullptr));
    if (!reply) {
        return {};
    }
    return QImage(xcb_get_image_data(reply.get()), width, height, QImage::Format_RGB32).copy();
}

} // namespace talmo::testbed
