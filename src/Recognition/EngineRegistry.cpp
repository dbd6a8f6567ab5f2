#include "Recognition/EngineRegistry.h"

#include "Base/CancellableWait.h"
#include "Base/DetailedError.h"
#include "Base/Log.h"
#include "Base/Task.h"
#include "Recognition/LiveAndFinalEngine.h"
#include "Recognition/Models/ModelStore.h"
#include "Recognition/RecogniserChoice.h"

#include <QCoro/QCoroFuture>

#include <QFileSystemWatcher>
#include <QPointer>
#include <QStandardPaths>

#include <algorithm>
#include <tuple>
#include <utility>

namespace talmo {

using Models = std::vector<InstalledModel>;
using Engines = std::vector<std::shared_ptr<SpeechEngine>>;

namespace {

constexpr Duration idleTime = std::chrono::minutes(10);

std::optional<EngineSpeechPlatform::ModelSource> modelSource(const EngineRegistry::Configuration &configuration)
{
    if (!configuration.install) {
        return std::nullopt;
    }
    return EngineSpeechPlatform::ModelSource{
        [catalogue = configuration.catalogue](const QString &locale) { return catalogue.bestFor(locale) != nullptr; },
        configuration.install};
}

QCoro::Task<void> take(QFuture<Models> looking, std::function<void(Models)> takeModels)
{
    try {
        Models models = co_await looking;
        takeModels(std::move(models));
    } catch (const Cancelled &) { // NOLINT(bugprone-empty-catch): Talmo ends.
    }
}

} // namespace

const QString EngineRegistry::automaticChoice = QStringLiteral("automatic");
const QString EngineRegistry::embeddedChoice = SpeechEngine::embeddedId();

EngineRegistry::EngineRegistry(std::shared_ptr<SerialExecutor> executor, std::shared_ptr<Clock> clock,
                               Configuration configuration)
    : m_configuration(std::move(configuration)),
      m_executor(std::move(executor)),
      m_clock(std::move(clock)),
      m_checker(SerialExecutor::onNewThread(QStringLiteral("talmo-models"))),
      m_platform(std::make_shared<EngineSpeechPlatform>(m_executor, m_clock, modelSource(m_configuration))),
      m_watcher(std::make_unique<QFileSystemWatcher>())
{
    arrange();
    watchFolders();
    lookForModels();
}

EngineRegistry::~EngineRegistry()
{
    m_idle.request_stop();
}

/// Models and libraries may also be added or removed by other processes or manually.
void EngineRegistry::watchFolders()
{
    if (m_configuration.models.folder.isEmpty()) {
        return;
    }
    QStringList folders{m_configuration.models.folder};
    for (const auto &factory : m_configuration.models.factories.installable) {
        if (!factory.libraryFolder.isEmpty()) {
            folders.append(factory.libraryFolder);
        }
    }
    for (const auto &folder : folders) {
        try {
            ModelStore(folder).makeFolder();
        } catch (const Error &error) {
            generalLog().error("no models can be installed: %@", {wholeDescription(error)});
        }
        m_watcher->addPath(folder);
    }
    connect(m_watcher.get(), &QFileSystemWatcher::directoryChanged, this, [this] { lookForModels(); });
}

/// A request during a scan starts another one before the callers are answered.
QFuture<void> EngineRegistry::lookForModels()
{
    if (m_looking) {
        m_looksAgain = true;
        return m_looking->future();
    }
    m_looking = Completion<void>::make();
    m_lookedFor = m_looking->future();
    look();
    return m_lookedFor;
}

void EngineRegistry::look()
{
    m_looksAgain = false;
    const auto looking = m_checker->call([configuration = m_configuration.models, known = m_models] {
        return InstalledModels::look(configuration, known);
    });
    logEscapes(take(looking, [self = QPointer(this)](Models models) {
        if (self) {
            self->takeModels(std::move(models));
        }
    }));
}

void EngineRegistry::takeModels(Models models)
{
    m_models.swap(models);
    arrange();
    publishVocabulary();
    // Models are freed on the thread that used them.
    m_executor->post([replaced = std::move(models)]() mutable { replaced.clear(); });
    if (m_looksAgain) {
        look();
    } else {
        std::exchange(m_looking, nullptr)->finish();
    }
}

/// The embedded engine knows one language, so the others keep serving theirs even if the user prefers it. It ranks
/// above models that are too slow, unless the user has chosen one of them.
Engines EngineRegistry::engines() const
{
    struct Candidate {
        std::shared_ptr<SpeechEngine> engine;
        bool isSlow;
        std::size_t rank;
    };
    const auto &catalogue = m_configuration.catalogue;
    std::vector<Candidate> usable{{m_configuration.models.factories.embedded, false, catalogue.entries().size() + 1}};
    for (const auto &model : m_models) {
        if (model.engine) {
            usable.push_back({model.engine, model.isSlow, catalogue.rank(model.name)});
        }
    }
    const auto choice = RecogniserChoice::of(m_configuration.choice);
    const auto order = [&choice](const Candidate &each) {
        const QString id = each.engine->id();
        const bool isChosen = id == choice.final;
        return std::tuple(!isChosen, each.isSlow, each.rank, id);
    };
    std::sort(usable.begin(), usable.end(),
              [&order](const auto &left, const auto &right) { return order(left) < order(right); });
    Engines sorted;
    for (const auto &each : usable) {
        sorted.push_back(each.engine);
    }
    return withLiveText(sorted);
}

/// Engines without live text are combined with those that have it.
Engines EngineRegistry::withLiveText(const Engines &engines) const
{
    const QString wanted = RecogniserChoice::of(m_configuration.choice).live;
    Engines live;
    for (const auto &engine : engines) {
        // The embedded one's live text would change too much; it is combined only on request.
        const bool isTaken =
            engine->id() == wanted || (wanted == RecogniserChoice::automatic() && engine->id() != embeddedChoice);
        if (engine->isStreaming() && isTaken) {
            live.push_back(engine);
        }
    }
    Engines result;
    for (const auto &engine : engines) {
        const bool needsText = !engine->isStreaming() && !live.empty();
        result.push_back(needsText ? std::make_shared<LiveAndFinalEngine>(engine, live) : engine);
    }
    return result;
}

void EngineRegistry::arrange()
{
    Q_EMIT objectWillChange();
    m_platform->setEngines(engines());
}

void EngineRegistry::choose(const QString &choice)
{
    m_configuration.choice = choice;
    arrange();
}

void EngineRegistry::warmUp(const QString &locale)
{
    for (const auto &engine : engines()) {
        if (!engine->speaks(locale) || !engine->problem().isEmpty()) {
            continue;
        }
        m_executor->post([engine, locale] {
            try {
                engine->warmUpFor(locale);
            } catch (const Error &error) { // The recording fails for the same reason and informs the user.
                generalLog().error("speech engine %@: %@", {engine->id(), wholeDescription(error)});
            }
        });
        return;
    }
}

QString EngineRegistry::pronunciationsPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/talmo/pronunciations.txt");
}

void EngineRegistry::setWords(const QStringList &words)
{
    m_words = words;
    publishVocabulary();
}

/// On the decoder thread: off the main thread because of the disk, and before the next recording is decoded.
void EngineRegistry::publishVocabulary()
{
    m_executor->post([all = engines(), words = m_words] {
        const PersonalVocabulary vocabulary{words, Pronunciation::readSoundsLike(pronunciationsPath())};
        for (const auto &engine : all) {
            engine->setVocabulary(vocabulary);
        }
    });
}

void EngineRegistry::noteUse()
{
    m_idle.request_stop();
    m_idle = std::stop_source();
    const auto unloadIfAlive = [self = QPointer(this)] {
        if (self) {
            self->unload();
        }
    };
    logEscapes(unloadLater(unloadIfAlive, m_clock, m_idle.get_token()));
}

void EngineRegistry::unload()
{
    m_executor->post([all = engines(), releaseMemory = m_configuration.releaseMemory] {
        for (const auto &engine : all) {
            engine->unload();
        }
        if (releaseMemory) {
            releaseMemory();
        }
    });
}

QCoro::Task<void> EngineRegistry::unloadLater(std::function<void()> unload, std::shared_ptr<Clock> clock,
                                              std::stop_token stop)
{
    // Cancelled by the next dictation, or when Talmo ends.
    const auto idle = clock->sleep(idleTime, stop);
    const bool isDue = co_await hasElapsed(idle);
    if (isDue) {
        unload();
    }
}

} // namespace talmo
