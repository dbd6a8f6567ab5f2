#include "Recognition/SpeechEngines.h"

#include "Base/Error.h"
#include "Base/Log.h"
#include "Base/Task.h"
#include "Recognition/CatalogueSpeechPlatform.h"
#include "Recognition/Models/ModelStore.h"

#include <QCoro/QCoroFuture>

#include <QFileSystemWatcher>
#include <QPointer>
#include <QStandardPaths>

#include <malloc.h>

#include <algorithm>
#include <tuple>
#include <utility>

namespace talmo {

using Models = std::vector<InstalledModel>;

namespace {

constexpr Duration idleTime = std::chrono::minutes(10);

/// What is not spoken into a microphone teaches nothing about one.
MicrophoneKnowledge knowledge(std::function<QString()> microphoneName)
{
    if (!microphoneName) {
        return {};
    }
    return {std::move(microphoneName), std::make_shared<MicrophoneMemory>(MicrophoneMemory::standardPath())};
}

QCoro::Task<void> take(QFuture<Models> looking, std::function<void(Models)> takeModels)
{
    try {
        takeModels(co_await looking);
    } catch (const Cancelled &) {
        co_return; // Talmo ends.
    }
}

} // namespace

const QString SpeechEngines::automaticChoice = QStringLiteral("automatic");
const QString SpeechEngines::embeddedChoice = QStringLiteral("embedded");

SpeechEngines::SpeechEngines(std::shared_ptr<SerialExecutor> executor, std::shared_ptr<Clock> clock,
                             std::function<QString()> microphoneName, Configuration configuration)
    : m_configuration(std::move(configuration)),
      m_executor(std::move(executor)),
      m_clock(std::move(clock)),
      m_embedded(std::make_shared<PocketSphinxPlatform>(m_executor, QString(), knowledge(std::move(microphoneName)))),
      m_checker(SerialExecutor::onNewThread(QStringLiteral("talmo-models"))),
      m_platform(std::make_shared<ChosenSpeechPlatform>(std::vector<std::shared_ptr<SpeechPlatform>>{m_embedded})),
      m_watcher(std::make_unique<QFileSystemWatcher>())
{
    if (m_configuration.install) {
        m_missing = std::make_shared<CatalogueSpeechPlatform>(m_configuration.catalogue, m_configuration.install);
    }
    arrange();
    watchFolder();
    lookForModels();
}

SpeechEngines::~SpeechEngines()
{
    m_idle.request_stop();
}

/// Another process may install or remove models, and so may hands.
void SpeechEngines::watchFolder()
{
    const QString folder = m_configuration.models.folder;
    if (folder.isEmpty()) {
        return;
    }
    try {
        ModelStore(folder).makeFolder();
    } catch (const Error &error) {
        generalLog().error("no models can be installed: %@", {error.localizedDescription()});
    }
    m_watcher->addPath(folder);
    connect(m_watcher.get(), &QFileSystemWatcher::directoryChanged, this, [this] { lookForModels(); });
}

/// Asked again while it looks, it looks once more before anybody is told.
QFuture<void> SpeechEngines::lookForModels()
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

void SpeechEngines::look()
{
    m_looksAgain = false;
    const auto looking =
        m_checker->call([configuration = m_configuration.models, known = m_models, executor = m_executor] {
            return InstalledModels::look(configuration, known, executor);
        });
    logEscapes(take(looking, [self = QPointer(this)](Models models) {
        if (self) {
            self->takeModels(std::move(models));
        }
    }));
}

void SpeechEngines::takeModels(Models models)
{
    m_models = std::move(models);
    for (const auto &platform : neural()) {
        platform->setWords(m_words);
    }
    arrange();
    if (m_looksAgain) {
        look();
    } else {
        std::exchange(m_looking, nullptr)->finish();
    }
}

std::vector<std::shared_ptr<SherpaPlatform>> SpeechEngines::neural() const
{
    Models usable;
    std::copy_if(m_models.begin(), m_models.end(), std::back_inserter(usable),
                 [](const InstalledModel &model) { return model.platform != nullptr; });
    std::sort(usable.begin(), usable.end(), [this](const InstalledModel &left, const InstalledModel &right) {
        const auto order = [this](const InstalledModel &model) {
            return std::tuple(model.name != m_configuration.choice, m_configuration.catalogue.rank(model.name),
                              model.name);
        };
        return order(left) < order(right);
    });
    std::vector<std::shared_ptr<SherpaPlatform>> platforms;
    for (const auto &model : usable) {
        platforms.push_back(model.platform);
    }
    return platforms;
}

/// Who goes before whom. The embedded recogniser knows one language, so the others stay for theirs in any case.
void SpeechEngines::arrange()
{
    const auto neuralOnes = neural();
    std::vector<std::shared_ptr<SpeechPlatform>> platforms(neuralOnes.begin(), neuralOnes.end());
    const auto place = m_configuration.choice == embeddedChoice ? platforms.begin() : platforms.end();
    platforms.insert(place, m_embedded);
    if (m_missing) {
        platforms.push_back(m_missing);
    }
    Q_EMIT objectWillChange();
    m_platform->setPlatforms(std::move(platforms));
}

void SpeechEngines::choose(const QString &choice)
{
    m_configuration.choice = choice;
    arrange();
}

void SpeechEngines::warmUp(const QString &locale)
{
    const bool isEmbeddedFirst = m_configuration.choice == embeddedChoice && englishModelLocale(locale);
    const auto platforms = neural();
    const auto speaking =
        std::find_if(platforms.begin(), platforms.end(), [&locale](const auto &each) { return each->speaks(locale); });
    if (isEmbeddedFirst || speaking == platforms.end()) {
        m_embedded->warmUp();
    } else {
        (*speaking)->warmUp();
    }
}

QString SpeechEngines::pronunciationsPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/talmo/pronunciations.txt");
}

void SpeechEngines::setWords(const QStringList &words)
{
    m_words = words;
    // Off the main thread, for the disk's sake, and before the recording that comes next, since that is decoded there.
    m_executor->post([platform = m_embedded, words] {
        platform->setVocabulary({words, Pronunciation::readSoundsLike(pronunciationsPath())});
    });
    for (const auto &platform : neural()) {
        platform->setWords(words);
    }
}

void SpeechEngines::noteUse()
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

void SpeechEngines::unload()
{
    m_embedded->unload();
    for (const auto &platform : neural()) {
        platform->unload();
    }
    // What was freed in small pieces stays with the process otherwise: 40 MB of 90.
    m_executor->post([] { malloc_trim(0); });
}

QCoro::Task<void> SpeechEngines::unloadLater(std::function<void()> unload, std::shared_ptr<Clock> clock,
                                             std::stop_token stop)
{
    try {
        co_await clock->sleep(idleTime, stop);
    } catch (const Cancelled &) {
        co_return; // Somebody dictates again, or Talmo ends.
    }
    unload();
}

} // namespace talmo
