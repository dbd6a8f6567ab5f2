#pragma once

#include "Recognition/EngineFactories.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace talmo {

/// A model in the models folder.
struct InstalledModel {
    QString name;
    /// Distinguishes it from a later model at the same path.
    qint64 changed = 0;
    /// Null if it cannot be used.
    std::shared_ptr<SpeechEngine> engine;
    /// Why not; empty if it can.
    QString problem;
    /// It cannot keep up with speech.
    bool isSlow = false;
};

/// Finds installed models. On a thread that may wait for the disk and for models to be loaded.
namespace InstalledModels {

struct Configuration {
    /// Contains a folder for each model; empty if there is none.
    QString folder;
    EngineFactories factories;
    /// Throws Error if the model must not be loaded into this process.
    std::function<void(const SpeechEngine &engine, const QString &modelFolder)> check;
};

/// Models in `known` that have not changed are not checked again.
std::vector<InstalledModel> look(const Configuration &configuration, const std::vector<InstalledModel> &known);

} // namespace InstalledModels

} // namespace talmo
