#include "Platform/Linux/X11/Windows/FrontWindow.h"

#include "Platform/Linux/X11/Keys/KeyboardLayoutReader.h"
#include "Platform/Linux/X11/XProperty.h"

#include <utility>

namespace talmo {

namespace {

constexpr int deepestNesting = 12;

xcb_window_t parentOf(xcb_connection_t *connection, xcb_window_t window)
{
    const XcbPtr<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(connection, xcb_query_tree(connection, window), nullptr));
    return tree ? tree->parent : static_cast<xcb_window_t>(XCB_NONE);
}

/// The innermost window under the pointer, which receives the keys while no window has the focus.
xcb_window_t windowUnderPointer(XConnection &connection)
{
    xcb_window_t window = connection.root();
    for (int depth = 0; depth < deepestNesting; ++depth) {
        const XcbPtr<xcb_query_pointer_reply_t> pointer(
            xcb_query_pointer_reply(connection.get(), xcb_query_pointer(connection.get(), window), nullptr));
        if (!pointer || pointer->child == XCB_NONE) {
            break;
        }
        window = pointer->child;
    }
    return window == connection.root() ? static_cast<xcb_window_t>(XCB_NONE) : window;
}

xcb_window_t windowWithKeyboard(XConnection &connection)
{
    const XcbPtr<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection.get(), xcb_get_input_focus(connection.get()), nullptr));
    if (!reply || reply->focus == XCB_INPUT_FOCUS_NONE) {
        return XCB_NONE;
    }
    if (reply->focus == XCB_INPUT_FOCUS_POINTER_ROOT || reply->focus == connection.root()) {
        return windowUnderPointer(connection);
    }
    return reply->focus;
}

quint32 numberAt(XConnection &connection, xcb_window_t window, const QByteArray &property)
{
    return xNumbers(xProperty(connection.get(), window, connection.atom(property))).value(0, XCB_NONE);
}

bool isViewable(XConnection &connection, xcb_window_t window)
{
    const XcbPtr<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        connection.get(), xcb_get_window_attributes(connection.get(), window), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

/// While no window is active, window managers give the focus to a hidden window of their own.
bool isPlaceholder(XConnection &connection, xcb_window_t window)
{
    const auto manager = numberAt(connection, connection.root(), "_NET_SUPPORTING_WM_CHECK");
    return manager == window || (manager != XCB_NONE && connection.clientOf(manager) == connection.clientOf(window) &&
                                 numberAt(connection, connection.root(), "_NET_ACTIVE_WINDOW") == XCB_NONE);
}

/// The window that is about to get the focus. Openbox keeps naming a window that is gone.
xcb_window_t activatedWindow(XConnection &connection)
{
    const auto window = numberAt(connection, connection.root(), "_NET_ACTIVE_WINDOW");
    return window != XCB_NONE && isViewable(connection, window) ? window : static_cast<xcb_window_t>(XCB_NONE);
}

/// Uses the nearest ancestor that declares its program, since an inner window may have the focus.
void describeProgram(XConnection &connection, FrontWindow &front)
{
    bool isNamed = false;
    auto window = front.window;
    for (int depth = 0; depth < deepestNesting && window != XCB_NONE && window != connection.root(); ++depth) {
        const QByteArray both = xProperty(connection.get(), window, XCB_ATOM_WM_CLASS);
        if (!both.isEmpty() && !isNamed) {
            const auto halves = both.split('\0');
            const QString instanceName = QString::fromLatin1(halves.value(0));
            const QString className = QString::fromLatin1(halves.value(1));
            front.style = pasteStyleFor(instanceName, className);
            front.isImporter = importsClipboard(instanceName, className);
            front.topLevel = window;
            isNamed = true;
        }
        if (!xProperty(connection.get(), window, connection.atom("WM_STATE")).isEmpty()) {
            front.topLevel = window;
            return;
        }
        window = parentOf(connection.get(), window);
    }
}

} // namespace

FrontWindow frontWindow(XSession &session)
{
    auto &connection = session.connection();
    FrontWindow front;
    front.window = windowWithKeyboard(connection);
    if (front.window != XCB_NONE && isPlaceholder(connection, front.window)) {
        front.window = activatedWindow(connection);
    }
    // While a Wayland window has the focus, the X server gives its own to whatever the compositor keeps for that.
    const bool isElsewhere =
        session.isNested() && numberAt(connection, connection.root(), "_NET_ACTIVE_WINDOW") == XCB_NONE;
    if (front.window == XCB_NONE || isElsewhere) {
        return {};
    }
    front.topLevel = front.window;
    front.client = connection.clientOf(front.window);
    describeProgram(connection, front);
    if (front.style == PasteStyle::ControlShiftV) {
        // Decides whether the text has to be in the primary selection, too.
        front.style = possibleStyle(readKeyboardLayout(connection), front.style);
    }
    return front;
}

FrontWindow windowBeyondServer(XSession &session)
{
    auto &connection = session.connection();
    FrontWindow front;
    front.window = numberAt(connection, connection.root(), "_NET_SUPPORTING_WM_CHECK");
    front.topLevel = front.window;
    front.client = front.window == XCB_NONE ? 0 : connection.clientOf(front.window);
    return front;
}

bool isKeyboardGrabbed(XSession &session)
{
    // An unmapped window cannot grab, so this only queries the state.
    auto *connection = session.connection().get();
    const auto cookie =
        xcb_grab_keyboard(connection, 0, session.window(), XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const XcbPtr<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(connection, cookie, nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_ALREADY_GRABBED;
}

bool isEmbeddedIn(XSession &session, xcb_window_t topLevel, quint32 client)
{
    auto &connection = session.connection();
    constexpr std::size_t mostWindows = 300;
    std::vector<xcb_window_t> windows = {topLevel};
    for (std::size_t index = 0; index < windows.size() && windows.size() < mostWindows; ++index) {
        const XcbPtr<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(connection.get(), xcb_query_tree(connection.get(), windows[index]), nullptr));
        if (!tree) {
            continue;
        }
        const auto *children = xcb_query_tree_children(tree.get());
        for (int child = 0; child < xcb_query_tree_children_length(tree.get()); ++child) {
            if (connection.clientOf(children[child]) == client) {
                return true;
            }
            windows.push_back(children[child]);
        }
    }
    return false;
}

} // namespace talmo
