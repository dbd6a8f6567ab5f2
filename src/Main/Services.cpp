#include "Main/Services.h"

#include "App/DiagnosedTranscriptionService.h"
#include "App/DictationCancellation.h"
#include "App/LingeringOverlay.h"
#include "App/TidyEndCleanupService.h"
#include "App/TimedCleanupService.h"
#include "App/Trace/TracedPaste.h"
#include "App/Trace/TracedServices.h"
#include "Input/Audio/SpeexAudioConverter.h"
#include "Input/Hotkey/PausableEventMonitor.h"
#include "Insertion/ClipboardPasteInsertionService.h"
#include "Insertion/CommittingInsertionService.h"
#include "Insertion/PasswordFieldGuard.h"
#include "Insertion/QueuedInsertionService.h"
#include "Insertion/UnobstructedInsertionService.h"
#include "Insertion/VerifiedInsertionService.h"
#include "Platform/Linux/Session/DesktopSettingsOpener.h"
#include "Platform/Linux/Sound/PulsePreroll.h"
#include "Platform/Linux/System/LinuxAuthorizationSource.h"
#include "Settings/TalmoSettings.h"
#include "Speech/SpeechTranscriptionService.h"
#include "UI/Accessibility/Announcement.h"
#include "UI/Accessibility/AnnouncingOverlay.h"
#include "UI/Overlay/RecordingOverlayController.h"

#include <utility>

namespace talmo {

namespace {

std::shared_ptr<PermissionsManager> makePermissions(const ServiceParts &parts)
{
    const auto authorization = std::make_shared<LinuxAuthorizationSource>(
        [engine = parts.audioEngine] { return engine->isAccessRefused(); },
        [engine = parts.audioEngine, executor = parts.executors.speech] {
            return executor->call([engine] { return engine->askForAccess(); });
        });
    const auto permissions = std::make_shared<PermissionsManager>(authorization, parts.desktop->inputTrust,
                                                                  std::make_shared<DesktopSettingsOpener>());
    // A program without windows is never activated, so the next press would still find the old answer.
    parts.audioEngine->setOnAccessChanged([weak = std::weak_ptr(permissions), executor = parts.executors.main] {
        executor->post([weak] {
            if (const auto manager = weak.lock()) {
                manager->refresh();
            }
        });
    });
    return permissions;
}

std::shared_ptr<CleanupService> timed(std::shared_ptr<CleanupService> cleanup, std::shared_ptr<EditingPace> pace,
                                      const ServiceParts &parts)
{
    return std::make_shared<TimedCleanupService>(TimedCleanupService::Parts{
        std::move(cleanup), parts.clock, [model = parts.languageModel] { return model->server().model; },
        [pace = std::move(pace)](const QString &editor, Duration duration) { pace->note(editor, duration); }});
}

std::shared_ptr<SpacedInsertionService> makeInsertion(const ServiceParts &parts,
                                                      const std::shared_ptr<DictationTrace> &trace)
{
    const Desktop &desktop = *parts.desktop;
    const auto pasting = std::make_shared<ClipboardPasteInsertionService>(
        std::make_shared<TracedPasteboard>(desktop.pasteboard, trace),
        std::make_shared<TracedKeyPoster>(desktop.keyPoster, desktop.pasteWitness, trace), desktop.inputTrust,
        parts.clock);
    std::shared_ptr<TextInsertionService> verified =
        std::make_shared<VerifiedInsertionService>(pasting, desktop.pasteWitness);
    if (desktop.textCommitter) {
        verified = std::make_shared<CommittingInsertionService>(desktop.textCommitter, verified);
    }
    const auto guarded =
        std::make_shared<PasswordFieldGuard>(verified, desktop.focusedField, parts.clock, parts.guardsPasswordFields);
    const auto unobstructed = std::make_shared<UnobstructedInsertionService>(guarded, parts.clearTheWay);
    const auto exact = std::make_shared<QueuedInsertionService>(unobstructed);
    return std::make_shared<SpacedInsertionService>(
        exact, desktop.cursorWatch, [options = parts.options] { return options->isOn(DictationOption::SpaceBetween); });
}

/// A microphone that is unplugged during the recording is reported on the card, beside the title.
void tellOfUnplugging(const ServiceParts &parts, const std::shared_ptr<DictationNotice> &notice)
{
    parts.audioEngine->setOnUnplugged([weak = std::weak_ptr(notice), executor = parts.executors.main] {
        executor->post([weak] {
            if (const auto shown = weak.lock();
                shown && TalmoCoordinator::shared().state().is(TalmoState::Case::Recording)) {
                shown->setHint(QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Microphone unplugged")), {});
            }
        });
    });
}

} // namespace

Services::Services(const ServiceParts &parts)
    : trace(std::make_shared<DictationTrace>(parts.clock)),
      permissions(makePermissions(parts)),
      recorder(std::make_shared<AudioRecorder>(parts.audioEngine)),
      transcription(std::make_shared<SpeechTranscriptionService>(
          parts.speech, std::make_shared<SpeexAudioConverterFactory>(), parts.executors.speech, parts.executors.main)),
      cleanup(std::make_shared<TextCleanupService>(parts.executors.cleanup, parts.languageModel)),
      editingPace(std::make_shared<EditingPace>()),
      // Otherwise the model would keep generating an answer that is no longer needed.
      interruptibleCleanup(std::make_shared<InterruptibleCleanupService>(
          timed(cleanup, editingPace, parts), [model = parts.languageModel] { model->cancelRequests(); })),
      preroll(std::make_shared<PulsePreroll>(parts.audioEngine, parts.executors.speech)),
      notice(std::make_shared<DictationNotice>()),
      history(std::make_shared<DictationHistory>(parts.options)),
      pause(std::make_shared<DictationPause>()),
      commandedKeys(std::make_shared<CommandedEventMonitor>(parts.desktop->eventMonitor)),
      eventMonitor(
          std::make_shared<PausableEventMonitor>(commandedKeys, [pause = pause] { return pause->isPaused(); })),
      keys(std::make_shared<GlobalHotkeyManager>(eventMonitor, parts.desktop->inputTrust, parts.clock,
                                                 parts.executors.main)),
      gestures(std::make_shared<DeferringHotkeyService>(
          DeferringHotkeyService::Parts{keys, preroll, interruptibleCleanup, notice, parts.clock})),
      insertion(makeInsertion(parts, trace)),
      lastDictation(std::make_shared<LastDictation>()),
      recovery(
          std::make_shared<DictationRecovery>(lastDictation, parts.desktop->pasteboard, parts.desktop->pasteWitness))
{
    tellOfUnplugging(parts, notice);
    endGesture = [weakGestures = std::weak_ptr(gestures), weakKeys = std::weak_ptr(keys)] {
        const auto deferred = weakGestures.lock();
        const auto manager = weakKeys.lock();
        if (deferred && manager) {
            deferred->endGesture();
            manager->endGesture();
        }
    };
    // A recording under way ends as its key would have ended it, which cannot any more.
    const auto endIfPaused = [paused = pause.get(), end = endGesture] {
        if (!paused->isPaused()) { // It is about to be paused.
            end();
        }
    };
    QObject::connect(pause.get(), &Observable::objectWillChange, pause.get(), endIfPaused);
}

std::unique_ptr<TalmoCoordinator> Services::makeCoordinator(const ServiceParts &parts)
{
    CoordinatorParts made;
    made.permissions = permissions;
    made.settings = TalmoSettings::shared();
    made.audioRecorder = std::make_shared<TracedRecorder>(recorder, trace);
    made.transcriptionService = std::make_shared<RememberedTranscriptionService>(
        std::make_shared<DiagnosedTranscriptionService>(
            std::make_shared<TracedTranscriptionService>(transcription, trace), parts.audioEngine),
        lastDictation);
    made.hotkeyManager = std::make_shared<TracedHotkeyService>(gestures, trace);
    made.textCleanupService = std::make_shared<RememberedCleanupService>(
        std::make_shared<TidyEndCleanupService>(std::make_shared<TracedCleanupService>(interruptibleCleanup, trace)),
        lastDictation);
    made.insertionService =
        std::make_shared<RememberedInsertionService>(insertion, parts.desktop->focusedField, history);
    made.locale = parts.locale;
    made.clock = parts.clock;
    made.mainExecutor = parts.executors.main;
    made.makeOverlay = [desktop = parts.desktop, told = notice, clock = parts.clock](TalmoCoordinator &coordinator) {
        const auto card =
            std::make_shared<RecordingOverlayController>(coordinator, desktop->makePanelWindow, desktop->screens, told);
        const auto lingering = std::make_shared<LingeringOverlay>(card, told, clock);
        return std::make_unique<AnnouncingOverlay>(lingering, coordinator, told, &announceToScreenReader);
    };
    auto coordinator = std::make_unique<TalmoCoordinator>(std::move(made));
    gestures->follow(*coordinator);
    cancellation = new DictationCancellation(
        {parts.desktop->cancelKey, notice, [keys = keys] { return keys->recognizer().activeMode(); },
         [keys = keys] { keys->endGesture(); },
         [settings = TalmoSettings::shared()] { return settings->hotkeyDisplayName(); }},
        *coordinator);                                           // The coordinator is its parent.
    new SoundCues(parts.options, parts.cuePlayer, *coordinator); // Likewise.
    return coordinator;
}

} // namespace talmo
