#pragma once

#include "Platform/Linux/X11/Keys/PasteChord.h"
#include "Platform/Linux/X11/XSession.h"

namespace talmo {

/// The window that has the keyboard, and what a paste has to know of its program.
struct FrontWindow {
    /// None: what is typed now reaches nobody.
    xcb_window_t window = XCB_NONE;
    /// The window that the window manager knows it by.
    xcb_window_t topLevel = XCB_NONE;
    /// See XConnection::clientOf().
    quint32 client = 0;
    PasteStyle style = PasteStyle::ControlV;
    /// See RestorePolicy::postToImporter().
    bool isImporter = false;
};

// The X session's thread only.

FrontWindow frontWindow(XSession &session);

/// Another client receives every key, whichever window has the keyboard: a screen locker, an open menu.
bool isKeyboardGrabbed(XSession &session);

/// One of the client's windows is embedded in this one, however deep; then keys reach it through the outer window.
bool isEmbeddedIn(XSession &session, xcb_window_t topLevel, quint32 client);

} // namespace talmo
