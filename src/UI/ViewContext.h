#pragma once

#include "App/DictationHistory.h"
#include "App/DictationPause.h"
#include "App/DictationRecovery.h"
#include "App/TalmoCoordinator.h"
#include "Input/Permissions/PermissionsManager.h"
#include "Settings/DesktopExtension.h"
#include "Settings/DictationOptions.h"
#include "Settings/HotkeySettings.h"
#include "Settings/LanguageSettings.h"
#include "Settings/MicrophoneSettings.h"
#include "Settings/PasswordFieldSettings.h"
#include "Settings/PastePermission.h"
#include "Settings/RecogniserSettings.h"
#include "Settings/TalmoSettings.h"
#include "Settings/WordPronunciations.h"
#include "UI/EditingServer.h"

#include <QFuture>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace talmo {

/// What the views show and act upon. They observe only the coordinator, which also announces changes of the settings
/// and of the permissions. It outlives the views.
struct ViewContext {
    TalmoCoordinator *coordinator = nullptr;
    std::shared_ptr<TalmoSettings> settings;
    std::shared_ptr<PermissionsManager> permissions;
    /// Why the language model is unavailable, as a sentence; none if it is available. Never blocks.
    std::function<std::optional<QString>()> unavailabilityMessage;
    /// Probes the availability again; finishes once that is done. Never fails.
    std::function<QFuture<void>()> refreshAvailability;
    /// The server that receives the text. Never blocks. Empty if the platform has no such servers.
    std::function<EditingServer()> editingServer;
    /// Null if the platform has only one recogniser.
    std::shared_ptr<RecogniserSettings> recogniser;
    /// Null if the platform cannot detect password fields.
    std::shared_ptr<PasswordFieldSettings> passwordFields;
    /// Null if nothing can be recovered.
    std::shared_ptr<DictationRecovery> recovery;
    /// Null if the platform has none.
    std::shared_ptr<DictationOptions> options;
    /// Null if no history can be kept.
    std::shared_ptr<DictationHistory> history;
    /// Null if no recogniser uses pronunciations.
    std::shared_ptr<WordPronunciations> pronunciations;
    /// Null if the key cannot be paused.
    std::shared_ptr<DictationPause> pause;
    /// Null if the platform offers no choice.
    std::shared_ptr<MicrophoneSettings> microphone;
    std::shared_ptr<HotkeySettings> hotkeys;
    std::shared_ptr<LanguageSettings> language;
    /// Null if the desktop needs none.
    std::shared_ptr<DesktopExtension> desktopExtension;
    /// What the desktop does not allow, and what the user can do about it: a sentence or two each.
    QStringList limits;
    /// Begin and end a recording as the key would.
    std::function<void()> beginRecording;
    std::function<void()> endRecording;
    /// Whether the desktop has settings for the permission; empty if it has for all.
    std::function<bool(SettingsPane)> canOpenSettings;
    /// Null if the user need not allow pasting, or cannot.
    std::shared_ptr<PastePermission> pastePermission = nullptr;
    /// The key that the desktop reports if it is asked; null if it need not be.
    std::shared_ptr<DesktopExtension> desktopKey = nullptr;
};

} // namespace talmo
