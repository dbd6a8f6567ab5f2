#pragma once

#include "App/Services/PipelineServices.h"
#include "Base/Clock.h"
#include "Base/SerialExecutor.h"
#include "Base/Task.h"
#include "Input/Hotkey/EventMonitor.h"
#include "Input/Hotkey/FnGestureRecognizer.h"
#include "Input/Permissions/InputTrust.h"

#include <QCoro/QCoroTask>
#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <stop_token>
#include <vector>

namespace talmo {

/// Watches the fn key session-wide, feeds the gesture recogniser and runs its hold timer. Main thread only.
class GlobalHotkeyManager final : public QObject, public HotkeyService {
    Q_OBJECT

public:
    /// The event mask for changes of modifier flags.
    static constexpr quint64 flagsChangedMask = quint64(1) << 12;
    /// The flag of the fn key.
    static constexpr quint64 functionFlag = quint64(1) << 23;

    GlobalHotkeyManager(std::shared_ptr<EventMonitor> eventMonitor, std::shared_ptr<InputTrust> inputTrust,
                        std::shared_ptr<Clock> clock, std::shared_ptr<SerialExecutor> mainExecutor);

    void setOnHotkeyDown(std::function<void()> callback) override { m_onHotkeyDown = std::move(callback); }
    void setOnHotkeyUp(std::function<void()> callback) override { m_onHotkeyUp = std::move(callback); }

    /// Installs the monitors once; they stay until the process ends.
    void start() override;

    const FnGestureRecognizer &recognizer() const { return m_recognizer; }
    /// Forgets the current gesture, without a callback: the next press starts a new one.
    void endGesture();

private:
    void handleFlagsChanged(const FlagsChangedEvent &event);
    void handlePress();
    void handleRelease();
    void scheduleHoldConfirmation();
    static QCoro::Task<void> confirmHoldLater(QPointer<GlobalHotkeyManager> self, std::shared_ptr<Clock> clock,
                                              std::stop_token stop);
    void deliver(std::optional<FnGestureSignal> signal);

    std::shared_ptr<EventMonitor> m_eventMonitor;
    std::shared_ptr<InputTrust> m_inputTrust;
    std::shared_ptr<Clock> m_clock;
    std::shared_ptr<SerialExecutor> m_mainExecutor;

    std::vector<std::shared_ptr<EventMonitorToken>> m_monitors;
    bool m_isActive = false;
    bool m_isFnDown = false;
    FnGestureRecognizer m_recognizer;
    TaskHandle m_holdConfirmationTask;
    std::function<void()> m_onHotkeyDown;
    std::function<void()> m_onHotkeyUp;
};

} // namespace talmo
