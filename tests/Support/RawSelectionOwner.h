#pragma once

#include "Platform/Linux/X11/XConnection.h"

#include <QByteArray>
#include <QList>

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

namespace talmo::test {

/// Another program that owns the clipboard, at protocol level: it can offer anything, refuse to convert, or not
/// respond, and it records the requests. Has its own thread and X connection.
class RawSelectionOwner {
public:
    struct Value {
        QByteArray data;
        QByteArray type;
        int unitBits = 8;
        /// How the owner treats requests for this target despite offering it.
        bool isRefused = false;
        bool isIgnored = false;
        /// Starts an incremental transfer, sends this many pieces of the data, then nothing more.
        int pieces = 0;
        /// Exits after the last piece, like a crashing program.
        bool endsThen = false;
    };
    /// The first of the unknown atoms listed in TARGETS besides the values' own.
    static constexpr std::uint32_t firstUnknownAtom = 0x100000;

    RawSelectionOwner(const QByteArray &selection, std::vector<std::pair<QByteArray, Value>> values,
                      std::uint32_t unknownTargets = 0);
    ~RawSelectionOwner();
    RawSelectionOwner(const RawSelectionOwner &) = delete;
    RawSelectionOwner &operator=(const RawSelectionOwner &) = delete;

    std::vector<QByteArray> requestedTargets() const;

private:
    void serve();
    void answer(const xcb_selection_request_event_t &request);
    void sendPiece(const xcb_property_notify_event_t &event);

    XConnection m_connection;
    xcb_window_t m_window;
    xcb_atom_t m_selection;
    std::vector<std::pair<QByteArray, Value>> m_values;
    std::uint32_t m_unknownTargets;
    const Value *m_sending = nullptr;
    int m_sent = 0;
    mutable std::mutex m_mutex;
    std::vector<QByteArray> m_requested;
    std::atomic<bool> m_isEnding = false;
    std::thread m_thread;
};

} // namespace talmo::test
