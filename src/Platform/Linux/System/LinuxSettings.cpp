#include "Platform/Linux/System/LinuxSettings.h"

namespace talmo {

QString LinuxSettings::speechEngineKey()
{
    return QStringLiteral("linux.speechEngine");
}

QString LinuxSettings::standInKeysKey()
{
    return QStringLiteral("linux.standInKeys");
}

QString LinuxSettings::dictationLanguageKey()
{
    return QStringLiteral("linux.dictationLanguage");
}

QString LinuxSettings::guardPasswordFieldsKey()
{
    return QStringLiteral("linux.guardPasswordFields");
}

LinuxSettings LinuxSettings::read(const UserDefaults &defaults)
{
    LinuxSettings settings;
    settings.languageModel.address = defaults.string(QStringLiteral("linux.languageModelAddress")).value_or(QString());
    settings.languageModel.modelName = defaults.string(QStringLiteral("linux.languageModelName")).value_or(QString());
    settings.standInKeys = defaults.stringArray(standInKeysKey()).value_or(QStringList());
    settings.readKeyboards = defaults.boolean(QStringLiteral("linux.readKeyboards")).value_or(true);
    settings.dictationLanguage = defaults.string(dictationLanguageKey()).value_or(QString());
    settings.colourScheme = defaults.string(QStringLiteral("linux.colorScheme")).value_or(QString());
    settings.neuralLibrary = defaults.string(QStringLiteral("linux.neuralLibrary")).value_or(QString());
    settings.speechEngine = defaults.string(speechEngineKey()).value_or(QStringLiteral("automatic"));
    return settings;
}

} // namespace talmo
