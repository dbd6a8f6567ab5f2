#include "App/TalmoCoordinator.h"

#include "Base/Log.h"
#include "Base/Task.h"
#include "Base/Text.h"
#include "Speech/TranscriptionError.h"

#include <utility>

namespace talmo {

namespace {

constexpr Duration errorDisplayTime = std::chrono::seconds(3);

SharedInstance<TalmoCoordinator> &sharedCoordinator()
{
    static SharedInstance<TalmoCoordinator> coordinator;
    return coordinator;
}

QString installingText(const QString &locale)
{
    return QStringLiteral("Installing on-device speech model for ") + locale +
           QStringLiteral(" (one-time download, requires internet)…");
}

} // namespace

TalmoCoordinator &TalmoCoordinator::shared()
{
    return *sharedCoordinator().get();
}

void TalmoCoordinator::setSharedFactory(SharedInstance<TalmoCoordinator>::Factory factory)
{
    sharedCoordinator().setFactory(std::move(factory));
}

void TalmoCoordinator::releaseShared()
{
    sharedCoordinator().release();
}

TalmoCoordinator::TalmoCoordinator(CoordinatorParts parts)
    : m_parts(std::move(parts))
{
    connect(m_parts.permissions.get(), &Observable::objectWillChange, this, &Observable::objectWillChange);
    connect(m_parts.settings.get(), &Observable::objectWillChange, this, &Observable::objectWillChange);
}

TalmoCoordinator::~TalmoCoordinator() = default;

void TalmoCoordinator::start()
{
    m_parts.hotkeyManager->setOnHotkeyDown([self = WeakSelf(this)] {
        if (self) {
            self->beginDictation();
        }
    });
    m_parts.hotkeyManager->setOnHotkeyUp([self = WeakSelf(this)] {
        if (self) {
            self->endDictation();
        }
    });
    m_parts.hotkeyManager->start();
}

void TalmoCoordinator::beginDictation()
{
    if (!m_state.is(TalmoState::Case::Idle) && !m_state.is(TalmoState::Case::Error)) {
        return;
    }
    if (m_parts.permissions->microphoneStatus() != SimpleStatus::Granted ||
        m_parts.permissions->speechRecognitionStatus() != SimpleStatus::Granted) {
        transitionTo(TalmoState::error(
            QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Grant microphone and speech-recognition permissions first."))));
        return;
    }
    publish(m_liveTranscript, QString());
    publish(m_lastError, std::nullopt);
    launchTask([self = WeakSelf(this)] { return handlingFailure(self, startSequence(self)); });
}

QCoro::Task<void> TalmoCoordinator::handlingFailure(WeakSelf self, QCoro::Task<void> sequence)
{
    std::exception_ptr failure;
    try {
        co_await sequence;
    } catch (...) {
        failure = std::current_exception();
    }
    if (self && failure) {
        self->handleFailure(failure);
    }
}

QCoro::Task<void> TalmoCoordinator::startSequence(WeakSelf self)
{
    if (!self) {
        co_return;
    }
    const QString locale = self->m_parts.locale->currentIdentifier();
    if (self->m_confirmedInstalledLocaleIdentifier != locale) {
        co_await ensureModel(self->m_parts.transcriptionService, locale);
        if (!self) {
            co_return;
        }
        self->m_confirmedInstalledLocaleIdentifier = locale;
    }
    co_await startRecording(self, locale);
}

/// Returns once the locale's model is installed.
QCoro::Task<void> TalmoCoordinator::ensureModel(std::shared_ptr<TranscriptionService> transcription, QString locale)
{
    const ModelStatus status = co_await transcription->modelStatus(locale);
    if (!status.supported) {
        throw TranscriptionError(TranscriptionError::Case::LocaleNotSupported);
    }
    if (!status.installed) {
        generalLog().debug("%s", {installingText(locale)});
        co_await transcription->installModel(locale);
    }
}

QCoro::Task<void> TalmoCoordinator::startRecording(WeakSelf self, QString locale)
{
    const auto transcription = self->m_parts.transcriptionService;
    auto onUpdate = [self](const QString &text) {
        if (self) {
            self->publish(self->m_liveTranscript, text);
        }
    };
    auto onError = [self](const std::exception_ptr &error) {
        if (self) {
            self->handleFailure(error);
        }
    };
    co_await transcription->startTranscription(self->m_parts.audioRecorder, locale, onUpdate, onError);
    if (self) {
        self->transitionTo(TalmoState::recording());
    }
}

void TalmoCoordinator::endDictation()
{
    if (!m_state.is(TalmoState::Case::Recording)) {
        return;
    }
    transitionTo(TalmoState::processing());
    m_parts.audioRecorder->stop();
    launchTask([self = WeakSelf(this)] { return handlingFailure(self, processingSequence(self)); });
}

void TalmoCoordinator::cancelDictation()
{
    if (!m_state.is(TalmoState::Case::Recording)) {
        return;
    }
    m_parts.audioRecorder->stop();
    launchTask([transcription = m_parts.transcriptionService] { return transcription->cancelTranscription(); });
    transitionTo(TalmoState::idle());
}

QCoro::Task<void> TalmoCoordinator::processingSequence(WeakSelf self)
{
    if (!self) {
        co_return;
    }
    const auto transcription = self->m_parts.transcriptionService;
    const QString rawTranscript = co_await transcription->stopTranscription();
    if (!self) {
        co_return;
    }
    // Only the length counts here: a blank transcript continues, and the insertion refuses it.
    if (rawTranscript.isEmpty()) {
        self->transitionTo(TalmoState::error(QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "No speech detected."))));
        co_return;
    }
    generalLog().debug("raw transcript: %s", {rawTranscript});
    const QString cleaned = co_await cleanedText(self, Text::trimWhitespaceAndNewlines(rawTranscript));
    if (!self) {
        co_return;
    }
    generalLog().debug("cleaned transcript: %s", {cleaned});
    self->publish(self->m_liveTranscript, cleaned);
    self->transitionTo(TalmoState::inserting());

    const auto insertion = self->m_parts.insertionService;
    co_await insertion->insert(cleaned);
    if (self) {
        self->transitionTo(TalmoState::idle());
    }
}

QCoro::Task<QString> TalmoCoordinator::cleanedText(WeakSelf self, QString trimmed)
{
    // Read once: changes by the user during this dictation do not affect it.
    const auto settings = self->m_parts.settings;
    const bool aiCleanupEnabled = settings->aiCleanupEnabled();
    const bool conciseTextEnabled = settings->conciseTextEnabled();
    const TextTone textTone = settings->textTone();
    const QStringList dictionaryWords = settings->dictionaryWords();
    if (trimmed.isEmpty()) {
        co_return QString();
    }
    const auto cleaner = self->m_parts.textCleanupService;
    QString cleaned;
    std::exception_ptr failure;
    try {
        cleaned = co_await cleaner->cleanup(trimmed, aiCleanupEnabled, conciseTextEnabled, textTone, dictionaryWords);
    } catch (...) {
        failure = std::current_exception();
    }
    if (failure) {
        // The cleanup violates its contract; the text must stay visible all the same.
        if (self) {
            self->publish(self->m_liveTranscript, trimmed);
        }
        std::rethrow_exception(failure);
    }
    co_return cleaned;
}

void TalmoCoordinator::transitionTo(const TalmoState &state)
{
    publish(m_state, state);
    switch (state.which()) {
    case TalmoState::Case::Recording:
    case TalmoState::Case::Processing:
    case TalmoState::Case::Inserting:
        overlay().show();
        break;
    case TalmoState::Case::Idle:
        overlay().hide();
        break;
    case TalmoState::Case::Error:
        publish(m_lastError, state.message());
        generalLog().debug("error: %s", {state.message()});
        overlay().show();
        launchTask([self = WeakSelf(this), state] { return hideOverlayLater(self, state); });
        break;
    }
}

/// Only the overlay is hidden: the error state stays, so that the icon keeps its mark.
QCoro::Task<void> TalmoCoordinator::hideOverlayLater(WeakSelf self, TalmoState shownError)
{
    if (!self) {
        co_return;
    }
    const auto clock = self->m_parts.clock;
    try {
        co_await clock->sleep(errorDisplayTime);
    } catch (...) { // NOLINT(bugprone-empty-catch): an interrupted or failed wait counts as done.
    }
    if (self && self->m_state == shownError) {
        self->overlay().hide();
    }
}

void TalmoCoordinator::handleFailure(const std::exception_ptr &error)
{
    m_parts.audioRecorder->stop();
    launchTask([transcription = m_parts.transcriptionService] { return transcription->cancelTranscription(); });
    transitionTo(TalmoState::error(localizedDescription(error)));
}

QCoro::Task<void> TalmoCoordinator::requestPermissions()
{
    return askForPermissions(m_parts.permissions);
}

/// Each step runs regardless of the previous answer.
QCoro::Task<void> TalmoCoordinator::askForPermissions(std::shared_ptr<PermissionsService> permissions)
{
    co_await permissions->requestMicrophonePermission();
    co_await permissions->requestSpeechRecognitionPermission();
    permissions->requestAccessibility();
}

void TalmoCoordinator::launchTask(std::function<QCoro::Task<void>()> body)
{
    m_parts.mainExecutor->post([body = std::move(body)] { logEscapes(body()); });
}

OverlayService &TalmoCoordinator::overlay()
{
    if (!m_overlay) {
        m_overlay = m_parts.makeOverlay(*this);
    }
    return *m_overlay;
}

} // namespace talmo
