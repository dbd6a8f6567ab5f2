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

/// Stands between the key and the coordinator, which ignores gestures that it cannot act on. None is lost here:
///
/// - A gesture that begins while the sentence before is being processed or inserted waits. That sentence is hurried
///   along, and then the recording starts with what has been said since the press.
/// - A gesture that ends before its recording has begun ends it as soon as it has begun, so no microphone stays on.
///
/// Main thread.
class DeferringHotkeyService final : public QObject, public HotkeyService {
    Q_OBJECT

public:
    /// A gesture that has waited for this long, or finds an insertion that has, is answered with a notice.
    static constexpr Duration noticeDelay = std::chrono::milliseconds(500);

    struct Parts {
        std::shared_ptr<HotkeyService> keys;
        std::shared_ptr<SpeechPreroll> preroll;
        std::shared_ptr<InterruptibleCleanupService> cleanup;
        std::shared_ptr<DictationNotice> notice;
        std::shared_ptr<Clock> clock;
    };

    explicit DeferringHotkeyService(Parts parts);

    /// Whose gestures these are. Before start().
    void follow(TalmoCoordinator &coordinator);

    void setOnHotkeyDown(std::function<void()> callback) override { m_onHotkeyDown = std::move(callback); }
    void setOnHotkeyUp(std::function<void()> callback) override { m_onHotkeyUp = std::move(callback); }
    void start() override;

    /// A recording runs, or a gesture is on its way to one.
    bool isGestureActive() const;

    /// Ignores the key from now on.
    void close() { m_isClosed = true; }

    /// Ends the recording, if there is one, and hurries its sentence into the window in front: without the language
    /// model. True once nothing is left to be done; false when `longest` was not enough.
    QFuture<bool> finishDictation(Duration longest);

private:
    /// What the gesture waits for: the sentence before, or the start of its own recording.
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
    /// The gesture that waits is over: its recording ends as soon as it has begun.
    bool m_isOver = false;
    bool m_isClosed = false;
    std::optional<Instant> m_insertingSince;
    std::stop_source m_announcement;
    /// While finishDictation() waits.
    std::shared_ptr<Completion<bool>> m_finished;
    std::stop_source m_finishingTimeout;
};

} // namespace talmo
