#pragma once

#include "App/DictationNotice.h"
#include "App/InterruptibleCleanupService.h"
#include "App/TalmoCoordinator.h"
#include "Base/Clock.h"
#include "Input/Audio/SpeechPreroll.h"

#include <QFuture>
#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace talmo {

/// Sits between the key and the coordinator, which ignores gestures it cannot act on, so that none is lost:
///
/// - A gesture that begins while the previous sentence is being processed or inserted waits. That sentence is hurried
///   along, and then the recording starts with the audio since the press.
/// - A gesture that ends before its recording has begun ends the recording as soon as it begins, so no microphone stays
///   open.
///
/// Main thread.
class DeferringHotkeyService final : public QObject, public HotkeyService {
    Q_OBJECT

public:
    /// A notice is shown for a gesture that has waited this long, or that arrives when an insertion has taken this
    /// long.
    static constexpr Duration noticeDelay = std::chrono::milliseconds(500);

    struct Parts {
        std::shared_ptr<HotkeyService> keys;
        std::shared_ptr<SpeechPreroll> preroll;
        std::shared_ptr<InterruptibleCleanupService> cleanup;
        std::shared_ptr<DictationNotice> notice;
        std::shared_ptr<Clock> clock;
    };

    explicit DeferringHotkeyService(Parts parts);

    /// The coordinator that the gestures are for. Call before start().
    void follow(TalmoCoordinator &coordinator);

    void setOnHotkeyDown(std::function<void()> callback) override { m_onHotkeyDown = std::move(callback); }
    void setOnHotkeyUp(std::function<void()> callback) override { m_onHotkeyUp = std::move(callback); }
    void start() override;

    /// A recording is running, or a gesture is about to start one.
    bool isGestureActive() const;

    /// Begins a gesture as the key would, but without a press that prepared it: audio is kept from now on if the
    /// recording has to wait.
    void beginGesture();
    /// Ends the current gesture as its key would; does nothing without one.
    void endGesture() { gestureEnded(); }

    /// Ignores the key from now on.
    void close() { m_isClosed = true; }

    /// Ends the recording, if any, and inserts its sentence as soon as possible, without the language model. True
    /// once nothing is left to do; false if `longest` was not enough.
    QFuture<bool> finishDictation(Duration longest);

private:
    /// What the gesture is waiting for: the previous sentence, or the start of its own recording.
    enum class Wait { None, ForLastSentence, ForRecording };

    void gestureBegan();
    void gestureEnded();
    void beginWaiting();
    void beginDictation();
    void setWait(Wait wait);
    void stateMayHaveChanged();
    void recordingStarted();
    void announceWait();
    void finishIfDone();
    void endFinishing(bool isDone);
    bool isBusy() const;
    static QCoro::Task<void> announceLater(QPointer<DeferringHotkeyService> self, std::shared_ptr<Clock> clock,
                                           std::stop_token stop);
    static QCoro::Task<void> giveUpLater(QPointer<DeferringHotkeyService> self, std::shared_ptr<Clock> clock,
                                         Duration longest, std::stop_token stop);

    Parts m_parts;
    QPointer<TalmoCoordinator> m_coordinator;
    std::function<void()> m_onHotkeyDown;
    std::function<void()> m_onHotkeyUp;
    Wait m_wait = Wait::None;
    /// The waiting gesture has ended: its recording ends as soon as it has begun.
    bool m_isOver = false;
    bool m_isClosed = false;
    std::optional<Instant> m_insertingSince;
    std::stop_source m_announcement;
    /// Set while finishDictation() is waiting.
    std::shared_ptr<Completion<bool>> m_finished;
    std::stop_source m_finishingTimeout;
};

} // namespace talmo
