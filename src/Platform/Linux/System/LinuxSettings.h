#pragma once

#include "LanguageModel/LoopbackLanguageModel.h"
#include "Settings/UserDefaults.h"

#include <QString>
#include <QStringList>

namespace talmo {

/// Settings that exist only on this platform, beside the preferences. Read once, at startup.
struct LinuxSettings {
    /// "linux.languageModelAddress" and "linux.languageModelName".
    LoopbackLanguageModel::Configuration languageModel;
    /// "linux.standInKeys": names of keys that stand in for fn. Empty for the default ones.
    QStringList standInKeys;
    /// "linux.readKeyboards": on Wayland, take the keys from the keyboards' devices where this user may read them.
    bool readKeyboards = true;
    /// "linux.dictationLanguage", such as "en_GB". Empty for the desktop's.
    QString dictationLanguage;
    /// "linux.colorScheme": "light" or "dark". Empty to follow the desktop.
    QString colourScheme;

    /// "linux.neuralLibrary": the library of the neural engine. Empty to search the usual places.
    QString neuralLibrary;
    /// "linux.speechEngine": "automatic", "embedded", or the name of an installed model, which is then preferred.
    QString speechEngine;

    static QString speechEngineKey();
    static QString standInKeysKey();
    static QString dictationLanguageKey();
    /// "linux.guardPasswordFields": whether pasting into password fields is prevented; true unless it is false. Read
    /// before each insertion.
    static QString guardPasswordFieldsKey();
    static LinuxSettings read(const UserDefaults &defaults);
};

} // namespace talmo
