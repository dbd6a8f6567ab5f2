#include "Recognition/Recognisers.h"

#include "Base/Error.h"
#include "Recognition/ModelCheck.h"
#include "Recognition/Models/ModelStore.h"
#include "Speech/TranscriptionError.h"

#include <QCoro/QCoroFuture>

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

bool speaks(const EngineRegistry &engines, const QString &locale)
{
    const auto &models = engines.models();
    return std::any_of(models.begin(), models.end(),
                       [&locale](const InstalledModel &model) { return model.engine && model.engine->speaks(locale); });
}

/// Throws what keeps an installed model from being used.
void requireNoProblem(const EngineRegistry &engines, const QString &name)
{
    for (const auto &model : engines.models()) {
        if (model.name == name && !model.problem.isEmpty()) {
            throw Error(model.problem);
        }
    }
}

/// Provides an engine for a language that has none: waits for the scan under way, then downloads the catalogue's best
/// model. Throws if the catalogue lacks the language, the engine's library is missing, an installed model cannot be
/// used, or the installation fails.
QCoro::Task<void> provideLanguage(std::shared_ptr<EngineRegistry> engines, std::shared_ptr<SpeechModels> models,
                                  EngineFactories factories, QString locale)
{
    co_await engines->modelsChecked();
    if (speaks(*engines, locale)) {
        co_return;
    }
    const ModelEntry *best = models->catalogue().bestFor(locale);
    if (best == nullptr) {
        throw TranscriptionError(TranscriptionError::Case::LocaleNotSupported);
    }
    const ModelEntry entry = *best;
    requireNoProblem(*engines, entry.id);
    factories.forEntry(entry).library(); // Without it the model is of no use, and is not downloaded.
    co_await models->install(entry);
    co_await engines->lookForModels();
    requireNoProblem(*engines, entry.id);
}

} // namespace

ModelInstaller Recognisers::installer(const std::shared_ptr<Clock> &clock, const EngineFactories &factories,
                                      const QString &neuralLibrary)
{
    const auto tryModel = [factories, neuralLibrary](const QString &folder) {
        const EngineFactory &factory = factories.forModel(folder);
        factory.checkFiles(folder);
        if (factory.isLibraryInstalled()) {
            checkModelOnce(*factory.make(QString(), folder), neuralLibrary, folder);
        }
    };
    return ModelInstaller(ModelStore(ModelStore::standardFolder()), clock, tryModel);
}

Recognisers Recognisers::make(const std::shared_ptr<SerialExecutor> &executor, const std::shared_ptr<Clock> &clock,
                              const Options &options)
{
    const ModelCatalogue catalogue = ModelCatalogue::withUsersFile(ModelCatalogue::usersPath());
    const QString neuralLibrary = options.engines.neuralLibrary;
    Recognisers parts;
    parts.factories = EngineFactories::standard(options.engines);
    parts.models = std::make_shared<SpeechModels>(installer(clock, parts.factories, neuralLibrary), catalogue);
    // Weak, so that neither keeps the other alive.
    const auto enginesLater = std::make_shared<std::weak_ptr<EngineRegistry>>();
    const auto install = [enginesLater, weakModels = std::weak_ptr(parts.models), factories = parts.factories,
                          mainExecutor = SerialExecutor::onCurrentThread()](const QString &locale) {
        return mainExecutor->run<void>([enginesLater, weakModels, factories, locale] {
            const auto engines = enginesLater->lock();
            const auto models = weakModels.lock();
            if (!engines || !models) {
                throw Cancelled();
            }
            return provideLanguage(engines, models, factories, locale);
        });
    };
    EngineRegistry::Configuration configuration;
    configuration.models = {ModelStore::standardFolder(), parts.factories,
                            [neuralLibrary](const SpeechEngine &engine, const QString &modelFolder) {
                                checkModelOnce(engine, neuralLibrary, modelFolder);
                            }};
    configuration.catalogue = catalogue;
    configuration.choice = options.choice;
    configuration.install = install;
    configuration.releaseMemory = options.releaseMemory;
    parts.engines = std::make_shared<EngineRegistry>(executor, clock, configuration);
    // Ahead of any recording, since a damaged model would end the process.
    executor->post([embedded = parts.factories.embedded] { checkEmbeddedOnce(*embedded); });
    *enginesLater = parts.engines;
    return parts;
}

} // namespace talmo
