#pragma once

#include "App/DeferringHotkeyService.h"
#include "App/DictationHistory.h"
#include "App/DictationPause.h"
#include "App/DictationRecovery.h"
#include "App/InterruptibleCleanupService.h"
#include "App/LastDictation.h"
#include "App/SoundCues.h"
#include "App/TalmoCoordinator.h"
#include "App/Trace/DictationTrace.h"
#include "Cleanup/TextCleanupService.h"
#include "Input/Audio/AudioRecorder.h"
#include "Input/Hotkey/CommandedEventMonitor.h"
#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "Input/Permissions/PermissionsManager.h"
#include "Insertion/SpacedInsertionService.h"
#include "LanguageModel/EditingPace.h"
#include "LanguageModel/LoopbackLanguageModel.h"
#include "Main/Executors.h"
#include "Platform/Desktop.h"
#include "Platform/Linux/Sound/PulseAudioEngine.h"
#include "Settings/DictationOptions.h"
#include "Speech/SpeechPlatform.h"

#include <QFuture>

#include <functional>
#include <memory>

namespace talmo {

class DictationCancellation;

/// What the services are made of.
struct ServiceParts {
    Executors executors;
    std::shared_ptr<Clock> clock;
    std::shared_ptr<const Desktop> desktop;
    std::shared_ptr<PulseAudioEngine> audioEngine;
    std::shared_ptr<SpeechPlatform> speech;
    std::shared_ptr<LoopbackLanguageModel> languageModel;
    std::shared_ptr<LocaleSource> locale;
    /// Whether text is kept out of password fields.
    std::function<bool()> guardsPasswordFields;
    std::shared_ptr<DictationOptions> options;
    std::shared_ptr<CuePlayer> cuePlayer;
    /// Closes Talmo's own windows that are in the way of an insertion.
    std::function<QFuture<void>()> clearTheWay;
};

/// The coordinator's services, each with its decorators. Main thread.
struct Services {
    explicit Services(const ServiceParts &parts);

    /// Once.
    std::unique_ptr<TalmoCoordinator> makeCoordinator(const ServiceParts &parts);

    std::shared_ptr<DictationTrace> trace;
    std::shared_ptr<PermissionsManager> permissions;
    std::shared_ptr<AudioRecorder> recorder;
    std::shared_ptr<TranscriptionService> transcription;
    std::shared_ptr<TextCleanupService> cleanup;
    std::shared_ptr<EditingPace> editingPace;
    std::shared_ptr<InterruptibleCleanupService> interruptibleCleanup;
    std::shared_ptr<SpeechPreroll> preroll;
    std::shared_ptr<DictationNotice> notice;
    std::shared_ptr<DictationHistory> history;
    std::shared_ptr<DictationPause> pause;
    /// The desktop's, and those of talmoctl.
    std::shared_ptr<CommandedEventMonitor> commandedKeys;
    /// The same, unless the key is paused.
    std::shared_ptr<EventMonitor> eventMonitor;
    std::shared_ptr<GlobalHotkeyManager> keys;
    std::shared_ptr<DeferringHotkeyService> gestures;
    /// Ends a recording together with the key's gesture: otherwise the next press would end a recording that is already
    /// over.
    std::function<void()> endGesture;
    std::shared_ptr<SpacedInsertionService> insertion;
    std::shared_ptr<LastDictation> lastDictation;
    std::shared_ptr<DictationRecovery> recovery;
    /// The coordinator's; null until that is made.
    DictationCancellation *cancellation = nullptr;
};

} // namespace talmo
