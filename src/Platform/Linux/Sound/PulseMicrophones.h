#pragma once

#include "Platform/Linux/Sound/PulseConnection.h"

#include <QList>
#include <QString>

#include <functional>
#include <memory>

namespace talmo {

/// The microphones of the sound server, kept up to date, and the level of one of them. All functions on one thread,
/// which may wait for the server for half a second; the callbacks come on the connection's own thread.
class PulseMicrophones {
public:
    struct Microphone {
        QString name;
        /// As the desktop's mixer calls it.
        QString title;
        bool operator==(const Microphone &) const = default;
    };
    struct Inventory {
        bool hasServer = false;
        bool isAccessRefused = false;
        QString defaultName;
        QList<Microphone> microphones;
        bool operator==(const Inventory &) const = default;
    };
    /// Monitors of the machine's own output are not microphones.
    using OnInventory = std::function<void(const Inventory &)>;
    /// The loudest sample since the last call, from 0 to 1; about 25 times a second.
    using OnPeak = std::function<void(float)>;

    PulseMicrophones(OnInventory onInventory, OnPeak onPeak);
    ~PulseMicrophones();
    PulseMicrophones(const PulseMicrophones &) = delete;
    PulseMicrophones &operator=(const PulseMicrophones &) = delete;

    /// Connects unless it is connected already. Reports at once, and whenever something changes.
    void follow();
    void stopFollowing();
    /// The microphone whose level is reported; empty for none. Needs follow().
    void listenTo(const QString &name);

private:
    void subscribe();
    void requestInventory();
    void closeMeter();
    void readMeter();
    static void sourceListed(pa_context *, const pa_source_info *info, int endOfList, void *data);
    static void serverTold(pa_context *, const pa_server_info *info, void *data);

    OnInventory m_onInventory;
    OnPeak m_onPeak;
    std::unique_ptr<PulseConnection> m_connection;
    // Guarded by the connection's lock.
    Inventory m_next;
    pa_stream *m_meter = nullptr;
};

} // namespace talmo
