#pragma once

#include "Input/Hotkey/EventMonitor.h"
#include "Platform/Linux/Keys/StandInKeyFilter.h"
#include "Platform/Linux/X11/Keys/PostedKeys.h"
#include "Platform/Linux/X11/Keys/RepeatPairFilter.h"
#include "Platform/Linux/X11/XConnection.h"

#include <QList>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace talmo {

struct KeyboardLayout;

/// Observes the keys of the whole X session as raw XInput 2.2 events, also during another program's grab, without
/// consuming them. Main thread.
class XInput2EventMonitor final : public EventMonitor {
public:
    /// Opens its own connection; throws Error if there is no display. `standIns` are the symbols of the keys that stand
    /// in for fn. `isApplicationActive` returns whether one of Talmo's own windows has the keyboard focus.
    XInput2EventMonitor(std::shared_ptr<PostedKeys> postedKeys, QList<quint32> standIns,
                        std::function<bool()> isApplicationActive);
    ~XInput2EventMonitor() override;

    std::shared_ptr<EventMonitorToken>
    addGlobalMonitor(quint64 eventMask, std::function<void(const FlagsChangedEvent &)> handler) override;
    std::shared_ptr<EventMonitorToken>
    addLocalMonitor(quint64 eventMask,
                    std::function<std::optional<FlagsChangedEvent>(const FlagsChangedEvent &)> handler) override;

    /// Whether the server has XInput 2.2 and the connection is alive, so that keys can be observed.
    bool isUsable() const { return m_opcode != 0 && !m_connection.isBroken(); }

private:
    struct Monitor;

    bool selectRawKeys();
    void readStandIns();
    void releaseLostKeys(const KeyboardLayout &layout);
    void readEvents();
    void collect(const xcb_generic_event_t &event);
    void handleCollected(bool isPatienceOver);
    void handleKey(const RawKey &key);
    void reportWithheld();
    void report(bool isDown);

    XConnection m_connection;
    std::shared_ptr<PostedKeys> m_postedKeys;
    QList<quint32> m_standIns;
    std::function<bool()> m_isApplicationActive;
    quint8 m_opcode = 0;
    QSocketNotifier m_notifier;
    StandInKeyFilter m_filter;
    RepeatPairFilter m_collected;
    QTimer m_patience;
    QTimer m_withheld;
    std::vector<std::weak_ptr<Monitor>> m_monitors;
};

} // namespace talmo
