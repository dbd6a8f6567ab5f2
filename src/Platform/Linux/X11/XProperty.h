#pragma once

#include <xcb/xcb.h>

#include <QByteArray>
#include <QList>

#include <cstring>

namespace talmo {

/// A property's bytes, up to a megabyte; empty if the window or the property is missing.
QByteArray xProperty(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t name);

/// Parses a property of 32-bit numbers.
QList<quint32> xNumbers(const QByteArray &property);

/// The connection of the application's own windows; a reply on it implies that their earlier requests have been carried
/// out. Main thread, with a QGuiApplication on X11.
xcb_connection_t *applicationConnection();
xcb_window_t applicationRoot();
/// Each atom is requested only once.
xcb_atom_t applicationAtom(const char *name);

} // namespace talmo
