#pragma once

#include "LanguageModel/LoopbackLanguageModel.h"
#include "Settings/UserDefaults.h"

#include <QString>
#include <QStringList>

namespace talmo {

/// What only this platform needs to be told, in keys of its own beside the preferences. Read once, at the start.
struct LinuxSettings {
    /// "linux.languageModelAddress" and "linux.languageModelName".
    LoopbackLanguageModel::Configuration languageModel;
    /// "linux.standInKeys": names of keys that stand in for fn. Empty for the usual ones.
    QStringList standInKeys;
    /// "linux.dictationLanguage", such as "en_GB". Empty for the desktop's.
    QString dictationLanguage;
    /// "linux.colorScheme": "light" or "dark". Empty to look as the desktop does.
    QString colourScheme;

    /// "linux.neuralLibrary": the neural recogniser's library. Empty to look in the usual places.
    QString neuralLibrary;
    /// "linux.speechEngine": "automatic", "embedded", or the name of an installed model, which goes before the others.
    QString speechEngine;

    static QString speechEngineKey();
    /// "linux.guardPasswordFields": whether nothing is pasted into password fields, which is so unless it is false.
    /// Read before each insertion.
    static QString guardPasswordFieldsKey();
    static LinuxSettings read(const UserDefaults &defaults);
};

} // namespace talmo
