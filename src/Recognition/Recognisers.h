#pragma once

#include "Recognition/EngineFactories.h"
#include "Recognition/EngineRegistry.h"
#include "Recognition/Models/SpeechModels.h"

#include <functional>
#include <memory>

namespace talmo {

/// Everything that recognises speech, composed from the user's settings.
struct Recognisers {
    struct Options {
        EngineFactories::Options engines;
        /// The stored choice of a recogniser.
        QString choice;
        /// See EngineRegistry::Configuration.
        std::function<void()> releaseMemory;
    };

    EngineFactories factories;
    std::shared_ptr<SpeechModels> models;
    std::shared_ptr<EngineRegistry> engines;

    /// `executor`: the decoder thread. Main thread.
    static Recognisers make(const std::shared_ptr<SerialExecutor> &executor, const std::shared_ptr<Clock> &clock,
                            const Options &options);

    /// Installs models into the user's own folder, each with the components that it lacks, and tries each one.
    static RecogniserInstaller installer(const std::shared_ptr<Clock> &clock, const EngineFactories &factories,
                                         const ModelCatalogue &catalogue, const QString &neuralLibrary);

    /// With the user's own entries. Models that no engine supports, or that are too slow here, are not offered.
    static ModelCatalogue catalogue(const EngineFactories &factories);
    static std::function<bool(const ModelEntry &)> offer(const EngineFactories &factories);

    /// A model has to keep up with speech if there is a smaller one.
    static InstallationTerms termsFor(const ModelCatalogue &catalogue, const ModelEntry &entry, const QString &locale);
};

} // namespace talmo
