#pragma once

#include "App/DeferringHotkeyService.h"
#include "Base/Clock.h"
#include "Input/Audio/SpeechPreroll.h"
#include "Input/Hotkey/EventMonitor.h"

#include <QCoro/QCoroTask>
#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <stop_token>
#include <vector>

namespace talmo {

/// Prepares the microphone and the models on a key press that may lead to a recording, while the gesture is still
/// undecided. A press that ends a recording, or extends a waiting one, prepares nothing. Main thread.
class PressPreparation final : public QObject {
    Q_OBJECT

public:
    /// How long the microphone stays open after a single tap.
    static constexpr Duration readyTime = std::chrono::milliseconds(500);

    struct Parts {
        std::shared_ptr<EventMonitor> keys;
        std::shared_ptr<DeferringHotkeyService> gestures;
        std::shared_ptr<SpeechPreroll> preroll;
        std::shared_ptr<Clock> clock;
        /// Loads what a recording needs; returns at once.
        std::function<void()> warmUp;
    };

    explicit PressPreparation(Parts parts);

    /// Call before the gestures' own start(), so that presses arrive here first.
    void start();

private:
    void handleFlagsChanged(const FlagsChangedEvent &event);
    void pressed();
    void released();
    static QCoro::Task<void> closeLater(QPointer<PressPreparation> self, std::shared_ptr<Clock> clock,
                                        std::stop_token stop);

    Parts m_parts;
    std::vector<std::shared_ptr<EventMonitorToken>> m_monitors;
    bool m_isDown = false;
    bool m_isPreparing = false;
    std::stop_source m_closing;
};

} // namespace talmo
