#pragma once

#include <xcb/xcb.h>

#include <QByteArray>
#include <QHash>

#include <cstdlib>
#include <memory>

namespace talmo {

struct XcbFree {
    void operator()(void *memory) const { std::free(memory); } // NOLINT: xcb allocates with malloc.
};
/// Owns a reply, event or error allocated by xcb.
template <typename T>
using XcbPtr = std::unique_ptr<T, XcbFree>;

/// A connection to the X server. One thread at a time.
class XConnection {
public:
    /// Throws Error if there is no display.
    XConnection();
    ~XConnection();
    XConnection(const XConnection &) = delete;
    XConnection &operator=(const XConnection &) = delete;

    xcb_connection_t *get() const { return m_connection; }
    xcb_window_t root() const { return m_screen->root; }
    const xcb_screen_t &screen() const { return *m_screen; }
    /// Whether the server is gone and the connection unusable.
    bool isBroken() const { return xcb_connection_has_error(m_connection) != 0; }
    int fileDescriptor() const { return xcb_get_file_descriptor(m_connection); }
    void flush() const { xcb_flush(m_connection); }

    /// Each atom is requested only once.
    xcb_atom_t atom(const QByteArray &name);
    QByteArray atomName(xcb_atom_t atom);

    /// Equal for all windows of one client.
    quint32 clientOf(xcb_window_t window) const;

private:
    xcb_connection_t *m_connection;
    const xcb_screen_t *m_screen = nullptr;
    QHash<QByteArray, xcb_atom_t> m_atoms;
    QHash<xcb_atom_t, QByteArray> m_names;
};

} // namespace talmo
