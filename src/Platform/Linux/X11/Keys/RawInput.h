#pragma once

#include "Platform/Linux/X11/XConnection.h"

#include <xcb/xinput.h>

namespace talmo {

/// What the user types and clicks in the whole session, as raw events of XInput 2.2.
namespace RawInput {

/// The extension's opcode, which its events carry; zero if the server lacks it.
quint8 queryExtension(XConnection &connection);

/// Makes the connection receive keys, and clicks and touches on request. Does not wait for the reply: the caller checks
/// or discards the request.
xcb_void_cookie_t select(XConnection &connection, bool withClicks);

bool isKey(const xcb_ge_generic_event_t &event);
/// Whether it is a click or a touch. Turning the wheel is not: it scrolls, and the text cursor stays where it is.
bool isClick(const xcb_ge_generic_event_t &event);

} // namespace RawInput

} // namespace talmo
