#pragma once

#include <QString>

namespace talmo {

/// How a recogniser did with a model.
struct ModelReport {
    double secondsToLoad = 0;
    /// What the process grew by.
    double megabytes = 0;
    /// The share of the time that somebody speaks which a thread works.
    double shareOfSpeech = 0;

    /// "loaded in 0.3 s, 95 MB, 0.12 of the time spoken"
    QString description() const;
    QString toLine() const;
    /// Of the last line of such an output; all zeros where there is none.
    static ModelReport fromOutput(const QString &output);
};

/// Loads a neural model in a process of its own, which may end over it: the library ends the process over some models
/// that will not do. Waits, up to two minutes. Throws Error.
ModelReport checkModelApart(const QString &libraryPath, const QString &modelFolder);

/// The same, unless this very model has been found good with this very library before; what was found is noted in the
/// model's folder.
void checkModelOnce(const QString &libraryPath, const QString &modelFolder);

/// Loads the model in this process, for that other one.
ModelReport checkModelHere(const QString &libraryPath, const QString &modelFolder);
/// The same for the embedded recogniser.
ModelReport checkEmbeddedHere(const QString &modelFolder);

} // namespace talmo
