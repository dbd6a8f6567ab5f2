#include "Recognition/Recognisers.h"

#include "Base/Error.h"
#include "Recognition/ModelCheck.h"
#include "Recognition/Sherpa/SherpaLibrary.h"
#include "Speech/TranscriptionError.h"

#include <QCoro/QCoroFuture>

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

bool speaks(const SpeechEngines &engines, const QString &locale)
{
    const auto platforms = engines.neural();
    return std::any_of(platforms.begin(), platforms.end(),
                       [&locale](const auto &platform) { return platform->speaks(locale); });
}

/// Throws what keeps a model that is there already from being used.
void requireNoProblem(const SpeechEngines &engines, const QString &name)
{
    for (const auto &model : engines.models()) {
        if (model.name == name && !model.problem.isEmpty()) {
            throw Error(model.problem);
        }
    }
}

/// Makes a language recognisable that no recogniser here speaks: waits for models that are still being looked at, then
/// downloads the best of the catalogue. Throws where the language is in no catalogue, the recogniser's library is
/// missing, a model that is there cannot be used, or the installation fails.
QCoro::Task<void> provideLanguage(std::shared_ptr<SpeechEngines> engines, std::shared_ptr<SpeechModels> models,
                                  QString neuralLibrary, QString locale)
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
    SherpaLibrary::open(neuralLibrary); // Without it the model is of no use, and is not fetched.
    co_await models->install(entry);
    co_await engines->lookForModels();
    requireNoProblem(*engines, entry.id);
}

} // namespace

ModelInstaller Recognisers::installer(const std::shared_ptr<Clock> &clock, const QString &neuralLibrary)
{
    const auto tryModel = [neuralLibrary](const QString &folder) {
        SherpaModel::examine(folder);
        if (SherpaLibrary::isInstalled(neuralLibrary)) {
            checkModelOnce(SherpaLibrary::open(neuralLibrary)->path(), folder);
        }
    };
    return ModelInstaller(ModelStore(ModelStore::standardFolder()), clock, tryModel);
}

Recognisers Recognisers::make(const std::shared_ptr<SerialExecutor> &executor, const std::shared_ptr<Clock> &clock,
                              std::function<QString()> microphoneName, const LinuxSettings &settings)
{
    const ModelCatalogue catalogue = ModelCatalogue::withUsersFile(ModelCatalogue::usersPath());
    Recognisers parts;
    parts.models = std::make_shared<SpeechModels>(installer(clock, settings.neuralLibrary), catalogue);
    // Known to each other only by this, so that neither keeps the other alive.
    const auto enginesLater = std::make_shared<std::weak_ptr<SpeechEngines>>();
    const auto install = [enginesLater, weakModels = std::weak_ptr(parts.models), library = settings.neuralLibrary,
                          mainExecutor = SerialExecutor::onCurrentThread()](const QString &locale) {
        return mainExecutor->run<void>([enginesLater, weakModels, library, locale] {
            const auto engines = enginesLater->lock();
            const auto models = weakModels.lock();
            if (!engines || !models) {
                throw Cancelled();
            }
            return provideLanguage(engines, models, library, locale);
        });
    };
    const SpeechEngines::Configuration configuration{
        {ModelStore::standardFolder(), settings.neuralLibrary, &checkModelOnce},
        catalogue,
        settings.speechEngine,
        install};
    parts.engines = std::make_shared<SpeechEngines>(executor, clock, std::move(microphoneName), configuration);
    *enginesLater = parts.engines;
    return parts;
}

} // namespace talmo
