#pragma once

#include <xcb/xcb.h>

#include <QByteArray>
#include <QList>

#include <cstring>

namespace talmo {

/// A property's bytes, a megabyte at most; empty when the window or the property is not there.
QByteArray xProperty(xcb_connection_t *connection, xcb_window_t window, xcb_atom_t name);

/// A property that is a list of 32-bit numbers.
QList<quint32> xNumbers(const QByteArray &property);

/// The connection that the application's own windows use, so that what they asked for has been done once an answer to a
/// later question is there. Main thread, under a QGuiApplication on X11.
xcb_connection_t *applicationConnection();
xcb_window_t applicationRoot();
/// Asked for once each.
xcb_atom_t applicationAtom(const char *name);

} // namespace talmo
