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

    /// Installs models into the user's own folder, and tries each one if the engine's library is there.
    static ModelInstaller installer(const std::shared_ptr<Clock> &clock, const EngineFactories &factories,
                                    const QString &neuralLibrary);
};

} // namespace talmo
