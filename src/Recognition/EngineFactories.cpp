#include "Recognition/EngineFactories.h"

#include "Base/Error.h"
#include "Recognition/Models/ModelStore.h"
#include "Recognition/PocketSphinx/PocketSphinxEngine.h"
#include "Recognition/Sherpa/SherpaEngine.h"

#include <utility>

namespace talmo {

namespace {

/// What is not spoken into a microphone teaches nothing about one.
MicrophoneKnowledge knowledge(std::function<QString()> microphoneName)
{
    if (!microphoneName) {
        return {};
    }
    return {std::move(microphoneName), std::make_shared<MicrophoneMemory>(MicrophoneMemory::standardPath())};
}

EngineFactory sherpaOnnx(const QString &libraryPath)
{
    EngineFactory factory;
    factory.engine = QStringLiteral("sherpa-onnx");
    factory.make = [libraryPath](const QString &name, const QString &folder) {
        return std::make_shared<SherpaEngine>(name, libraryPath, folder);
    };
    factory.checkFiles = [](const QString &folder) { SherpaModel::examine(folder); };
    factory.isLibraryInstalled = [libraryPath] { return SherpaLibrary::isInstalled(libraryPath); };
    factory.library = [libraryPath] {
        const auto library = SherpaLibrary::open(libraryPath);
        return QStringLiteral("sherpa-onnx %1 in %2").arg(library->version(), library->path());
    };
    factory.missingLibraryMessage =
        QT_TRANSLATE_NOOP("Talmo", "These models need the library of sherpa-onnx, which is not installed. The command "
                                   "scripts/neural-library --user in Talmo's source folder installs it.");
    return factory;
}

} // namespace

const char *const EngineFactories::embeddedTitle =
    QT_TRANSLATE_NOOP("Talmo", "Built in, to begin with (PocketSphinx, English)");

EngineFactories EngineFactories::standard(const Options &options)
{
    return {std::make_shared<PocketSphinxEngine>(QString(), knowledge(options.microphoneName)),
            {sherpaOnnx(options.neuralLibrary)}};
}

const EngineFactory &EngineFactories::forModel(const QString &modelFolder) const
{
    return named(engineOfModel(modelFolder));
}

const EngineFactory &EngineFactories::forEntry(const ModelEntry &entry) const
{
    return named(entry.engine);
}

const EngineFactory &EngineFactories::named(const QString &engine) const
{
    if (engine.isEmpty()) {
        return installable.front(); // The user's own catalogue and models need not name one.
    }
    for (const auto &factory : installable) {
        if (factory.engine == engine) {
            return factory;
        }
    }
    throw Error(QStringLiteral("This model is for a recogniser that Talmo does not have: %1").arg(engine));
}

} // namespace talmo
