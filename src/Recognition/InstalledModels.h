#pragma once

#include "Base/SerialExecutor.h"
#include "Recognition/Models/ModelStore.h"
#include "Recognition/Sherpa/SherpaPlatform.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace talmo {

/// A model that lies in the models' folder.
struct InstalledModel {
    QString name;
    /// Tells it from another one that was put in its place.
    qint64 changed = 0;
    /// Null where it cannot be used.
    std::shared_ptr<SherpaPlatform> platform;
    /// Why not; empty where it can.
    QString problem;
};

/// Looks at installed models. On a thread that may wait for the disk and for models to be loaded.
namespace InstalledModels {

struct Configuration {
    /// Where models lie, each in a folder of its own; empty for none.
    QString folder;
    /// Of the neural recogniser; empty to look in the usual places.
    QString neuralLibrary;
    /// Throws Error when the model in a folder must not be loaded. Called with the library's file.
    std::function<void(const QString &libraryPath, const QString &modelFolder)> check;
};

/// What there is now; models known from before are not checked again. `executor` is where they decode.
std::vector<InstalledModel> look(const Configuration &configuration, const std::vector<InstalledModel> &known,
                                 const std::shared_ptr<SerialExecutor> &executor);

} // namespace InstalledModels

} // namespace talmo
