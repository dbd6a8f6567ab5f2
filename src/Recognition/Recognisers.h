#pragma once

#include "Platform/Linux/System/LinuxSettings.h"
#include "Recognition/Models/SpeechModels.h"
#include "Recognition/SpeechEngines.h"

#include <functional>
#include <memory>

namespace talmo {

/// The recognisers of this machine and the models that can be had for them, put together as the user's settings say.
struct Recognisers {
    std::shared_ptr<SpeechModels> models;
    std::shared_ptr<SpeechEngines> engines;

    /// `executor`: the thread on which everything is decoded. `microphoneName`: asked on that thread. Main thread.
    static Recognisers make(const std::shared_ptr<SerialExecutor> &executor, const std::shared_ptr<Clock> &clock,
                            std::function<QString()> microphoneName, const LinuxSettings &settings);

    /// Of which models are installed into the user's own folder, and tried with that library where there is one.
    static ModelInstaller installer(const std::shared_ptr<Clock> &clock, const QString &neuralLibrary);
};

} // namespace talmo
