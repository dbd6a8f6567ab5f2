#include "Recognition/EngineFactories.h"

#include "Base/DetailedError.h"
#include "Recognition/Models/ModelStore.h"
#include "Recognition/PocketSphinx/PocketSphinxEngine.h"
#include "Recognition/Sherpa/SherpaEngine.h"
#include "Recognition/Sherpa/SileroVoiceActivity.h"

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

/// Audio that does not come from a microphone must not calibrate one.
MicrophoneKnowledge knowledge(std::function<QString()> microphoneName)
{
    if (!microphoneName) {
        return {};
    }
    return {std::move(microphoneName),
            std::make_shared<MicrophoneCalibrationStore>(MicrophoneCalibrationStore::standardPath())};
}

/// Tells the embedded engine when nobody speaks: on its own, it hears words in music.
std::shared_ptr<VoiceActivity> loadVoiceActivity(const QString &libraryPath)
{
    const QString model = SileroVoiceActivity::find({});
    if (model.isEmpty() || !SherpaLibrary::isInstalled(libraryPath)) {
        return nullptr;
    }
    return std::make_shared<SileroVoiceActivity>(SherpaLibrary::open(libraryPath), model);
}

EngineFactory sherpaOnnx(const QString &libraryPath)
{
    EngineFactory factory;
    factory.engine = QStringLiteral("sherpa-onnx");
    // A model without notes is examined.
    factory.kinds = QStringList{QString(),
                                QStringLiteral("transducer"),
                                QStringLiteral("zipformer-ctc"),
                                QStringLiteral("nemo-ctc"),
                                QStringLiteral("offline-transducer"),
                                QStringLiteral("offline-nemo-ctc"),
                                QStringLiteral("whisper"),
                                QStringLiteral("moonshine"),
                                QStringLiteral("sense-voice"),
                                QStringLiteral("canary")};
    factory.make = [libraryPath, kinds = factory.kinds](const QString &name, const QString &folder) {
        const auto notes = ModelNotes::of(folder);
        if (!kinds.contains(notes.kind)) {
            throw Error(QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Talmo cannot use models of this kind: ")) +
                        notes.kind);
        }
        auto library = SherpaLibrary::open(libraryPath);
        library->requireVersion(notes.minLibrary);
        return std::make_shared<SherpaEngine>(name, std::move(library), folder);
    };
    factory.checkFiles = [](const QString &folder) { SherpaModel::examine(folder); };
    factory.isLibraryInstalled = [libraryPath] { return SherpaLibrary::isInstalled(libraryPath); };
    factory.library = [libraryPath] {
        const auto library = SherpaLibrary::open(libraryPath);
        return QStringLiteral("version %1 in %2").arg(library->version(), library->path());
    };
    factory.requireLibrary = [libraryPath](const QString &minVersion) {
        SherpaLibrary::open(libraryPath)->requireVersion(minVersion);
    };
    factory.checkLibrary = [](const QString &folder) { SherpaLibrary::open(SherpaLibrary::placeIn(folder)); };
    factory.libraryFolder = libraryPath.isEmpty() ? ModelStore::componentsFolder() : QString();
    factory.missingLibraryMessage =
        QT_TRANSLATE_NOOP("Talmo", "These models need the library of sherpa-onnx, which is not where the settings say, "
                                   "or does not exist for this computer. Remove linux.neuralLibrary from Talmo's "
                                   "settings file to have it downloaded.");
    return factory;
}

} // namespace

const char *const EngineFactories::embeddedTitle = QT_TRANSLATE_NOOP("Talmo", "Built in, to begin with (English)");

EngineFactories EngineFactories::standard(const Options &options)
{
    const auto load = [libraryPath = options.neuralLibrary] { return loadVoiceActivity(libraryPath); };
    return {std::make_shared<PocketSphinxEngine>(QString(), knowledge(options.microphoneName),
                                                 InstalledVoiceActivity(load)),
            {sherpaOnnx(options.neuralLibrary)}};
}

const EngineFactory &EngineFactories::forModel(const QString &modelFolder) const
{
    return named(ModelNotes::of(modelFolder).engine);
}

const EngineFactory &EngineFactories::forEntry(const ModelEntry &entry) const
{
    return named(entry.engine);
}

bool EngineFactories::support(const ModelEntry &entry) const
{
    return std::any_of(installable.begin(), installable.end(), [this, &entry](const EngineFactory &factory) {
        const bool isItsModel =
            entry.engine.isEmpty() ? &factory == &installable.front() : entry.engine == factory.engine;
        return isItsModel && factory.kinds.contains(entry.kind);
    });
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
    throw DetailedError(
        QStringLiteral(QT_TRANSLATE_NOOP(
            "Talmo",
            "This speech model is for a recogniser that Talmo does not have. Update Talmo, or choose another one.")),
        engine);
}

} // namespace talmo
