#pragma once

#include "Insertion/PasteStyle.h"
#include "Platform/Linux/X11/XSession.h"

namespace talmo {

/// The window with the keyboard focus, and what a paste needs to know about its program.
struct FrontWindow {
    /// XCB_NONE if no window would receive keys.
    xcb_window_t window = XCB_NONE;
    /// The top-level window, as the window manager knows it.
    xcb_window_t topLevel = XCB_NONE;
    /// See XConnection::clientOf().
    quint32 client = 0;
    /// For terminals, the one that this keyboard can type.
    PasteStyle style = PasteStyle::ControlV;
    /// See RestorePolicy::postToImporter().
    bool isImporter = false;
};

// The X session's thread only.

FrontWindow frontWindow(XSession &session);

/// Represents a window of the session that the server is nested in: its program reads the clipboard through the window
/// manager, which bridges it.
FrontWindow windowBeyondServer(XSession &session);

/// Whether another client receives all keys, whichever window has the focus: a screen locker or an open menu.
bool isKeyboardGrabbed(XSession &session);

/// Whether one of the client's windows is embedded in this one, at any depth; keys then reach it through the outer
/// window.
bool isEmbeddedIn(XSession &session, xcb_window_t topLevel, quint32 client);

} // namespace talmo
