#pragma once

#include "Main/Executors.h"
#include "Main/HotkeySettingsModel.h"
#include "Main/LanguageSettingsModel.h"
#include "Main/MicrophoneSettingsModel.h"
#include "Main/RecogniserSettingsModel.h"
#include "Main/WordPronunciationsModel.h"
#include "Platform/Desktop.h"
#include "Platform/Linux/Sound/PulseAudioEngine.h"
#include "Platform/Linux/System/SystemLocaleSource.h"
#include "Recognition/Recognisers.h"

#include <memory>

namespace talmo {

/// What the settings window changes besides the preferences: each is stored and takes effect immediately. Main thread.
struct SettingsModels {
    struct Parts {
        Executors executors;
        std::shared_ptr<Clock> clock;
        std::shared_ptr<UserDefaults> defaults;
        Recognisers recognisers;
        std::shared_ptr<SystemLocaleSource> locale;
        std::shared_ptr<PulseAudioEngine> audioEngine;
        /// Null if the keys cannot be chosen.
        std::shared_ptr<HotkeyControl> hotkeys;
    };

    explicit SettingsModels(const Parts &parts);

    std::shared_ptr<RecogniserSettingsModel> recogniser;
    std::shared_ptr<LanguageSettingsModel> language;
    std::shared_ptr<WordPronunciationsModel> pronunciations;
    std::shared_ptr<MicrophoneSettingsModel> microphone;
    /// Null if the keys cannot be chosen.
    std::shared_ptr<HotkeySettingsModel> hotkeys;
};

} // namespace talmo
