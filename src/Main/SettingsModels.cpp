#include "Main/SettingsModels.h"

#include "Settings/TalmoSettings.h"

namespace talmo {

namespace {

/// The engines read the pronunciations of the user's words together with the words.
std::function<void()> passWordsOn(const std::shared_ptr<EngineRegistry> &engines)
{
    return [weakEngines = std::weak_ptr(engines)] {
        if (const auto alive = weakEngines.lock()) {
            alive->setWords(TalmoSettings::shared()->dictionaryWords());
        }
    };
}

std::shared_ptr<HotkeySettingsModel> hotkeySettings(const SettingsModels::Parts &parts)
{
    if (!parts.hotkeys) {
        return nullptr;
    }
    return std::make_shared<HotkeySettingsModel>(parts.defaults, parts.hotkeys, [](const QString &name) {
        TalmoSettings::shared()->setHotkeyDisplayName(name);
    });
}

} // namespace

SettingsModels::SettingsModels(const Parts &parts)
    : recogniser(std::make_shared<RecogniserSettingsModel>(parts.recognisers.engines, parts.recognisers.models,
                                                           parts.defaults, parts.recognisers.factories, parts.locale)),
      language(std::make_shared<LanguageSettingsModel>(parts.defaults, parts.locale, parts.recognisers.engines,
                                                       recogniser, parts.recognisers.models->catalogue())),
      pronunciations(std::make_shared<WordPronunciationsModel>(EngineRegistry::pronunciationsPath(),
                                                               parts.executors.settings, parts.executors.main,
                                                               passWordsOn(parts.recognisers.engines))),
      microphone(std::make_shared<MicrophoneSettingsModel>(
          parts.defaults, parts.clock,
          [engine = parts.audioEngine](const QString &name) { engine->chooseMicrophone(name); })),
      hotkeys(hotkeySettings(parts))
{
}

} // namespace talmo
