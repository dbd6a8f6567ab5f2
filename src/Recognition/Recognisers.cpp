#include "Recognition/Recognisers.h"

#include "Base/Error.h"
#include "Recognition/ModelCheck.h"
#include "Recognition/Models/ModelStore.h"
#include "Speech/TranscriptionError.h"

#include <QCoro/QCoroFuture>

#include <QVersionNumber>

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

/// The model to install for a language: an installed one that lacks something, or the catalogue's.
const ModelEntry *modelFor(const SpeechModels &models, const QString &locale)
{
    const auto &catalogue = models.catalogue();
    for (const auto &entry : catalogue.entries()) {
        if (entry.speaks(locale) && models.store().isInstalled(entry.id)) {
            return &entry;
        }
    }
    return catalogue.bestFor(locale);
}

/// A model that turns out to be too slow is followed by the next smaller one; the last one is taken as it is.
QCoro::Task<ModelEntry> installFitting(std::shared_ptr<SpeechModels> models, ModelEntry entry, QString locale)
{
    while (true) {
        const auto terms = Recognisers::termsFor(models->catalogue(), entry, locale);
        bool isSlow = false;
        try {
            const auto end = models->install(entry, terms);
            co_await end;
        } catch (const ModelTooSlow &) {
            isSlow = true;
        }
        if (!isSlow) {
            co_return entry;
        }
        entry = *models->catalogue().nextSmaller(entry, locale);
    }
}

/// Provides an engine for a language that has none: waits for the current scan, then downloads the catalogue's model
/// for it, with the library if that is missing. Throws if the catalogue lacks the language, an installed model cannot
/// be used, or the installation fails.
QCoro::Task<void> provideLanguage(std::shared_ptr<EngineRegistry> engines, std::shared_ptr<SpeechModels> models,
                                  QString locale)
{
    co_await engines->modelsChecked();
    if (speaks(*engines, locale)) {
        co_return;
    }
    const ModelEntry *found = modelFor(*models, locale);
    if (found == nullptr) {
        throw TranscriptionError(TranscriptionError::Case::LocaleNotSupported);
    }
    const ModelEntry entry = *found;
    if (models->partsOf(entry).empty()) {
        requireNoProblem(*engines, entry.id);
    }
    const ModelEntry installed = co_await installFitting(models, entry, locale);
    co_await engines->lookForModels();
    requireNoProblem(*engines, installed.id);
}

/// Throws the library's problem if no other library can be obtained.
std::vector<ModelEntry> missingComponents(const EngineFactories &factories, const ModelCatalogue &catalogue,
                                          const ModelEntry &model)
{
    const EngineFactory &factory = factories.forEntry(model);
    const ModelStore components(ModelStore::componentsFolder());
    std::vector<ModelEntry> missing;
    try {
        factory.requireLibrary(model.minLibrary);
    } catch (const Error &) {
        const ModelEntry *library = catalogue.libraryOf(factory.engine);
        const bool isRecent = library != nullptr && QVersionNumber::fromString(library->version) >=
                                                        QVersionNumber::fromString(model.minLibrary);
        if (!isRecent || factory.libraryFolder.isEmpty()) {
            throw;
        }
        missing.push_back(*library);
    }
    for (const auto &id : model.needs) {
        const ModelEntry *component = catalogue.findComponent(id);
        if (component != nullptr && !components.isInstalled(id)) {
            missing.push_back(*component);
        }
    }
    return missing;
}

} // namespace

ModelCatalogue Recognisers::catalogue(const EngineFactories &factories)
{
    ModelCatalogue known = ModelCatalogue::withUsersFile(ModelCatalogue::usersPath());
    known.setOffered(offer(factories));
    return known;
}

std::function<bool(const ModelEntry &)> Recognisers::offer(const EngineFactories &factories)
{
    return [factories, store = ModelStore(ModelStore::standardFolder())](const ModelEntry &entry) {
        return factories.support(entry) && !store.isKnownSlow(entry.id);
    };
}

InstallationTerms Recognisers::termsFor(const ModelCatalogue &catalogue, const ModelEntry &entry, const QString &locale)
{
    InstallationTerms terms;
    terms.keepsInstalled = true;
    if (catalogue.nextSmaller(entry, locale) != nullptr) {
        terms.largestShareOfSpeech = largestShareOfSpeech;
    }
    return terms;
}

RecogniserInstaller Recognisers::installer(const std::shared_ptr<Clock> &clock, const EngineFactories &factories,
                                           const ModelCatalogue &catalogue, const QString &neuralLibrary)
{
    const ModelInstaller::Try tryModel = [factories, neuralLibrary](const QString &folder) {
        const EngineFactory &factory = factories.forModel(folder);
        factory.checkFiles(folder);
        const auto engine = factory.make(QString(), folder);
        return std::optional(checkModelOnce(*engine, neuralLibrary, folder).shareOfSpeech);
    };
    const ModelInstaller::Try tryComponent = [factories](const QString &folder) {
        if (ModelNotes::of(folder).kind == ModelEntry::libraryKind) {
            factories.forModel(folder).checkLibrary(folder);
        }
        return std::optional<double>();
    };
    return {ModelInstaller(ModelStore(ModelStore::standardFolder()), clock, tryModel),
            ModelInstaller(ModelStore(ModelStore::componentsFolder()), clock, tryComponent), clock,
            [factories, catalogue](const ModelEntry &model) { return missingComponents(factories, catalogue, model); }};
}

Recognisers Recognisers::make(const std::shared_ptr<SerialExecutor> &executor, const std::shared_ptr<Clock> &clock,
                              const Options &options)
{
    const QString neuralLibrary = options.engines.neuralLibrary;
    Recognisers parts;
    parts.factories = EngineFactories::standard(options.engines);
    const ModelCatalogue known = catalogue(parts.factories);
    parts.models = std::make_shared<SpeechModels>(installer(clock, parts.factories, known, neuralLibrary), known,
                                                  offer(parts.factories));
    // Weak, so that neither keeps the other alive.
    const auto enginesLater = std::make_shared<std::weak_ptr<EngineRegistry>>();
    const auto install = [enginesLater, weakModels = std::weak_ptr(parts.models),
                          mainExecutor = SerialExecutor::onCurrentThread()](const QString &locale) {
        return mainExecutor->run<void>([enginesLater, weakModels, locale] {
            const auto engines = enginesLater->lock();
            const auto models = weakModels.lock();
            if (!engines || !models) {
                throw Cancelled();
            }
            return provideLanguage(engines, models, locale);
        });
    };
    EngineRegistry::Configuration configuration;
    configuration.models = {ModelStore::standardFolder(), parts.factories,
                            [neuralLibrary](const SpeechEngine &engine, const QString &modelFolder) {
                                checkModelOnce(engine, neuralLibrary, modelFolder);
                            }};
    configuration.catalogue = known;
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
