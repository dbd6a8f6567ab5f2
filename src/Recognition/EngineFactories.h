#pragma once

#include "Recognition/Models/ModelCatalogue.h"
#include "Recognition/SpeechEngine.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace talmo {

/// Makes the engines of one implementation, each with one of the models that the user installs.
struct EngineFactory {
    /// What the model catalogue calls the implementation.
    QString engine;
    /// The kinds of model it can load, as in ModelEntry.
    QStringList kinds;
    /// Throws Error if the model cannot be used, as far as can be told without loading it.
    std::function<std::shared_ptr<SpeechEngine>(const QString &name, const QString &modelFolder)> make;
    /// Checks a model's files alone; works without the implementation's library. Throws Error.
    std::function<void(const QString &modelFolder)> checkFiles;
    std::function<bool()> isLibraryInstalled;
    /// Throws Error with what to do unless there is a usable library of at least that version; empty for any.
    std::function<void(const QString &minVersion)> requireLibrary;
    /// Throws Error unless a usable library was unpacked into that folder.
    std::function<void(const QString &folder)> checkLibrary;
    /// Where a downloaded library is found; empty if the settings name a library.
    QString libraryFolder;
    /// The library's version and place, for people. Throws Error with what to do if it is missing or unusable.
    std::function<QString()> library;
    /// For users, while the library is missing and cannot be downloaded; marked for translation.
    const char *missingLibraryMessage;
};

/// Every engine that Talmo knows. A new one is added in EngineFactories.cpp, and nowhere else.
struct EngineFactories {
    struct Options {
        /// Empty to look in the usual places.
        QString neuralLibrary;
        /// The microphone in use; asked on the decoder thread. Null if the audio does not come from one.
        std::function<QString()> microphoneName;
    };

    /// For the user's choice; marked for translation.
    static const char *const embeddedTitle;

    static EngineFactories standard(const Options &options);

    /// Of the implementation noted in the model's folder, or the first one if none is noted. Throws Error for an
    /// unknown one.
    const EngineFactory &forModel(const QString &modelFolder) const;
    /// The first one if the entry names none. Throws Error for an unknown one.
    const EngineFactory &forEntry(const ModelEntry &entry) const;
    /// Whether there is an engine for the model.
    bool support(const ModelEntry &entry) const;

    /// Always there, and the only one that needs no model of the user's.
    std::shared_ptr<SpeechEngine> embedded;
    /// Not empty.
    std::vector<EngineFactory> installable;

private:
    const EngineFactory &named(const QString &engine) const;
};

} // namespace talmo
