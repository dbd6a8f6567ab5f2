#pragma once

#include "Platform/Linux/X11/XConnection.h"

namespace talmo {

/// Whether the user has done anything since a moment that may have moved the text cursor of a window. Clicks are
/// received only until then.
class InputWatch {
public:
    /// The connection outlives this.
    explicit InputWatch(XConnection &connection);

    /// Starts again for this window; zero stops.
    void watch(quint32 window);
    bool wasInputSeen() const { return m_wasInputSeen; }

    /// The user has pressed a key or clicked.
    void noteInput();
    /// Counts as input, since another window may get the same id.
    void noteDestroyed(quint32 window);

private:
    void watchEnd(quint32 mask);

    XConnection &m_connection;
    /// Zero if no input is watched.
    quint32 m_window = 0;
    bool m_wasInputSeen = false;
};

} // namespace talmo
