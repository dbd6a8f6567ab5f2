#pragma once

#include "App/Services/PipelineServices.h"
#include "App/TalmoState.h"
#include "Base/Clock.h"
#include "Base/Error.h"
#include "Base/SerialExecutor.h"
#include "Base/SharedInstance.h"

#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

namespace talmo {

class TalmoCoordinator;

/// Everything the coordinator is built from. The services are shared because a suspended sequence keeps those it awaits
/// alive.
struct CoordinatorParts {
    std::shared_ptr<PermissionsService> permissions;
    std::shared_ptr<SettingsService> settings;
    std::shared_ptr<RecorderService> audioRecorder;
    std::shared_ptr<TranscriptionService> transcriptionService;
    std::shared_ptr<HotkeyService> hotkeyManager;
    std::shared_ptr<CleanupService> textCleanupService;
    std::shared_ptr<TextInsertionService> insertionService;
    std::shared_ptr<LocaleSource> locale;
    std::shared_ptr<Clock> clock;
    /// Runs work in later iterations of the main thread's event loop.
    std::shared_ptr<SerialExecutor> mainExecutor;
    /// Creates the overlay on first use; the coordinator outlives it.
    std::function<std::unique_ptr<OverlayService>(TalmoCoordinator &)> makeOverlay;
};

/// Runs dictations: owns every service, and is the only place where the pipeline's state changes.
///
/// Main thread only. The checks at the top of beginDictation() and endDictation() are the only guards against
/// overlapping dictations.
class TalmoCoordinator final : public Observable {
    Q_OBJECT

public:
    explicit TalmoCoordinator(CoordinatorParts parts);
    ~TalmoCoordinator() override;

    /// The process-wide coordinator, created on first use by the registered factory.
    static TalmoCoordinator &shared();
    static void setSharedFactory(SharedInstance<TalmoCoordinator>::Factory factory);
    /// Destroys the shared coordinator while Qt is still running. Called last, by the process entry only.
    static void releaseShared();

    const TalmoState &state() const { return m_state; }
    /// The transcript so far while recording; the cleaned text once processed.
    QString liveTranscript() const { return m_liveTranscript; }
    std::optional<QString> lastError() const { return m_lastError; }
    PermissionsService &permissions() const { return *m_parts.permissions; }
    SettingsService &settings() const { return *m_parts.settings; }

    /// Connects the gestures and starts listening.
    void start();
    /// Starts a dictation if the state allows it; returns at once.
    void beginDictation();
    /// Ends the current dictation and processes it; returns at once.
    void endDictation();
    /// Discards the current recording; returns at once.
    void cancelDictation();
    /// Asks for all three permissions in turn.
    QCoro::Task<void> requestPermissions();

private:
    using WeakSelf = QPointer<TalmoCoordinator>;

    // The sequences hold the coordinator weakly across every suspension, and the services they await strongly.
    static QCoro::Task<void> startSequence(WeakSelf self);
    static QCoro::Task<void> ensureModel(std::shared_ptr<TranscriptionService> transcription, QString locale);
    static QCoro::Task<void> startRecording(WeakSelf self, QString locale);
    static QCoro::Task<void> processingSequence(WeakSelf self);
    static QCoro::Task<QString> cleanedText(WeakSelf self, QString trimmed);
    /// Runs a sequence, and ends the dictation if it throws.
    static QCoro::Task<void> handlingFailure(WeakSelf self, QCoro::Task<void> sequence);
    static QCoro::Task<void> hideOverlayLater(WeakSelf self, TalmoState shownError);
    static QCoro::Task<void> askForPermissions(std::shared_ptr<PermissionsService> permissions);

    void launchTask(std::function<QCoro::Task<void>()> body);
    void transitionTo(const TalmoState &state);
    void handleFailure(const std::exception_ptr &error);
    OverlayService &overlay();

    CoordinatorParts m_parts;
    std::unique_ptr<OverlayService> m_overlay;
    TalmoState m_state = TalmoState::idle();
    QString m_liveTranscript;
    std::optional<QString> m_lastError;
    std::optional<QString> m_confirmedInstalledLocaleIdentifier;
};

} // namespace talmo
