#pragma once

#include "Recognition/SpeechEngine.h"
#include "Recognition/UnusableModel.h"

#include <QString>

#include <functional>
#include <optional>

namespace talmo {

/// How a recogniser performed with a model.
struct ModelReport {
    double secondsToLoad = 0;
    /// What the process grew by.
    double megabytes = 0;
    /// Processor time per second of speech, for one thread.
    double shareOfSpeech = 0;

    /// "loaded in 0.3 s, 95 MB, 0.12 of the time spoken"
    QString description() const;
    QString toLine() const;
    /// Parses the last line of such an output; all zeros if there is none.
    static ModelReport fromOutput(const QString &output);
    /// What checkModelOnce() measured for the model in that folder; nullopt if it has not been measured.
    static std::optional<ModelReport> noted(const QString &modelFolder);
};

/// A model that needs a larger share of the time spoken is too slow to dictate with.
inline constexpr double largestShareOfSpeech = 0.5;

/// How thoroughly a model is tried.
enum class ModelTrial { Load, Hear };

/// Loads the engine's model in this process and decodes ten seconds of audio. `usedMegabytes`: of this process. Throws
/// Error.
ModelReport measure(SpeechEngine &engine, const std::function<double()> &usedMegabytes,
                    ModelTrial trial = ModelTrial::Hear);

/// The same in a child process, because some libraries abort on an invalid model. Waits, up to two minutes.
/// `neuralLibrary`: as in EngineFactories::Options. `model`: a model folder, or "embedded". Throws UnusableModel, or
/// Error if the model could not be tried.
ModelReport measureApart(const QString &neuralLibrary, const QString &model, ModelTrial trial = ModelTrial::Hear);

/// measureApart(), unless the engine's files are those that passed before, as noted in the model's folder together with
/// the report.
ModelReport checkModelOnce(const SpeechEngine &engine, const QString &neuralLibrary, const QString &modelFolder);

/// Refuses the embedded engine if its model cannot be loaded. What passed is noted in the user's cache. On a thread
/// that may wait for half a second.
void checkEmbeddedOnce(SpeechEngine &engine);

} // namespace talmo
