#include "Recognition/EngineRegistry.h"

#include "Base/Error.h"
#include "Platform/Linux/System/ProcessMemory.h"
#include "Recognition/PocketSphinx/PocketSphinxEngine.h"
#include "Support/MadeUpEngine.h"
#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/ScriptedEngine.h"
#include "Support/TestLoop.h"

#include <QDir>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <utility>

#if defined(__has_feature) // For clang; g++ defines macros.
#define TALMO_HAS_FEATURE(feature) __has_feature(feature)
#else
#define TALMO_HAS_FEATURE(feature) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || TALMO_HAS_FEATURE(address_sanitizer) ||           \
    TALMO_HAS_FEATURE(thread_sanitizer)
static constexpr bool isSanitized = true;
#else
static constexpr bool isSanitized = false;
#endif

namespace talmo::test {

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

class EngineRegistryTest : public testing::Test {
protected:
    EngineRegistryTest()
    {
        configuration.releaseMemory = &ProcessMemory::releaseFreed;
        EngineFactory factory;
        factory.engine = u"made-up"_s;
        factory.make = [](const QString &name, const QString &) { return std::make_shared<MadeUpEngine>(name); };
        configuration.models = {models.path(), {embedded, {factory}}, [](const SpeechEngine &, const QString &) {}};
    }
    void addModel(const QString &name) { ASSERT_TRUE(QDir(models.path()).mkdir(name)); }
    EngineRegistry &registry()
    {
        if (!made) {
            made = std::make_unique<EngineRegistry>(SerialExecutor::onCurrentThread(), clock, configuration);
            EXPECT_TRUE(waitFor(made->modelsChecked()));
        }
        return *made;
    }
    QStringList order()
    {
        QStringList ids;
        for (const auto &engine : registry().engines()) {
            ids.append(engine->id());
        }
        return ids;
    }

    QTemporaryDir models;
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::shared_ptr<PocketSphinxEngine> embedded = std::make_shared<PocketSphinxEngine>();
    EngineRegistry::Configuration configuration;
    std::unique_ptr<EngineRegistry> made;
};

} // namespace

TEST_F(EngineRegistryTest, prefersModelsToEmbeddedEngine)
{
    addModel(u"en-small"_s);
    addModel(u"de-large"_s);
    EXPECT_THAT(order(), ElementsAre(u"de-large"_s, u"en-small"_s, u"embedded"_s));
}

TEST_F(EngineRegistryTest, chosenModelComesFirst)
{
    addModel(u"en-small"_s);
    addModel(u"en-large"_s);
    configuration.choice = u"en-small"_s;
    EXPECT_THAT(order(), ElementsAre(u"en-small"_s, u"en-large"_s, u"embedded"_s));
}

TEST_F(EngineRegistryTest, embeddedEngineComesFirstIfChosen)
{
    addModel(u"en-small"_s);
    registry().choose(EngineRegistry::embeddedChoice);
    EXPECT_THAT(order(), ElementsAre(u"embedded"_s, u"en-small"_s));
}

TEST_F(EngineRegistryTest, slowModelRanksAfterEmbeddedEngineUnlessChosen)
{
    addModel(u"en-large"_s);
    addModel(u"en-small"_s);
    QFile report(models.filePath(u"en-large/.talmo-report"_s));
    ASSERT_TRUE(report.open(QFile::WriteOnly));
    report.write(R"({"secondsToLoad": 1, "megabytes": 100, "shareOfSpeech": 0.6})");
    report.close();
    EXPECT_THAT(order(), ElementsAre(u"en-small"_s, u"embedded"_s, u"en-large"_s));
    registry().choose(u"en-large"_s);
    EXPECT_THAT(order(), ElementsAre(u"en-large"_s, u"en-small"_s, u"embedded"_s));
}

TEST_F(EngineRegistryTest, libraryThatIsInstalledLaterMakesModelUsable)
{
    const QTemporaryDir libraries;
    auto &factory = configuration.models.factories.installable.front();
    factory.libraryFolder = libraries.path();
    factory.make = [folder = libraries.path(), make = factory.make](const QString &name, const QString &modelFolder) {
        if (!QDir(folder + u"/library"_s).exists()) {
            throw Error(u"there is no library"_s);
        }
        return make(name, modelFolder);
    };
    addModel(u"en-small"_s);
    EXPECT_THAT(order(), ElementsAre(u"embedded"_s));
    ASSERT_TRUE(QDir(libraries.path()).mkdir(u"library"_s));
    EXPECT_TRUE(waitFor([this] { return registry().engines().size() == 2; }));
    EXPECT_THAT(order(), ElementsAre(u"en-small"_s, u"embedded"_s));
}

TEST_F(EngineRegistryTest, warmUpLoadsOnlyEngineOfThatLanguage)
{
    addModel(u"de-large"_s);
    registry().warmUp(u"de_DE"_s);
    settle();
    EXPECT_TRUE(dynamic_cast<const MadeUpEngine &>(*registry().engines().front()).isLoaded);
    EXPECT_FALSE(embedded->isLoaded());
}

TEST_F(EngineRegistryTest, streamingModelShowsTextOfOfflineOne)
{
    configuration.models.factories.installable.front().make = [](const QString &name, const QString &) {
        return std::make_shared<ScriptedEngine>(name, !name.contains(u"offline"_s));
    };
    addModel(u"en-live"_s);
    addModel(u"en-offline"_s);
    const auto loadedWith = [this](const QString &choice) {
        registry().choose(choice);
        registry().warmUp(u"en_US"_s);
        settle();
        QStringList loaded;
        for (const auto &model : registry().models()) {
            auto &engine = dynamic_cast<ScriptedEngine &>(*model.engine);
            if (std::exchange(engine.isLoaded, false)) {
                loaded.append(engine.id());
            }
        }
        return loaded;
    };
    EXPECT_THAT(loadedWith(u"en-offline"_s), ElementsAre(u"en-live"_s, u"en-offline"_s));
    EXPECT_THAT(loadedWith(u"en-live+en-offline"_s), ElementsAre(u"en-live"_s, u"en-offline"_s));
    EXPECT_THAT(loadedWith(u"none+en-offline"_s), ElementsAre(u"en-offline"_s));
    EXPECT_THAT(loadedWith(u"en-live"_s), ElementsAre(u"en-live"_s));
    EXPECT_FALSE(embedded->isLoaded());
    EXPECT_THAT(loadedWith(u"embedded+en-offline"_s), ElementsAre(u"en-offline"_s));
    EXPECT_TRUE(embedded->isLoaded());
}

TEST_F(EngineRegistryTest, modelFoundLaterGetsCustomVocabulary)
{
    registry().setWords({u"Kubernetes"_s});
    addModel(u"de-large"_s);
    EXPECT_TRUE(waitFor([this] { return registry().engines().size() == 2; }));
    settle();
    EXPECT_THAT(dynamic_cast<const MadeUpEngine &>(*registry().engines().front()).words, ElementsAre(u"Kubernetes"_s));
}

TEST_F(EngineRegistryTest, ignoresModelOfUnknownEngine)
{
    addModel(u"de-large"_s);
    QFile notes(models.filePath(u"de-large/talmo-model.json"_s));
    ASSERT_TRUE(notes.open(QFile::WriteOnly));
    notes.write(R"({"engine": "of-another-time"})");
    notes.close();
    EXPECT_THAT(order(), ElementsAre(u"embedded"_s));
    EXPECT_TRUE(registry().models().front().problem.contains(u"a recogniser that Talmo does not have"_s));
}

TEST_F(EngineRegistryTest, unloadsModelsAfterTenIdleMinutes)
{
    registry().warmUp(u"en_US"_s);
    settle();
    ASSERT_TRUE(embedded->isLoaded());
    registry().noteUse();
    clock->advance(9min);
    registry().noteUse();
    clock->advance(9min);
    settle();
    EXPECT_TRUE(embedded->isLoaded());
    clock->advance(1min);
    settle();
    EXPECT_FALSE(embedded->isLoaded());
}

TEST_F(EngineRegistryTest, unloadingReturnsMemoryToSystem)
{
    if (isSanitized) {
        GTEST_SKIP() << "sanitizers keep freed memory";
    }
    registry();
    const auto before = ProcessMemory::usedMegabytes();
    registry().warmUp(u"en_US"_s);
    registry().noteUse();
    settle();
    const auto loaded = ProcessMemory::usedMegabytes() - before;
    EXPECT_GT(loaded, 60);
    clock->advance(10min);
    settle();
    EXPECT_LT(ProcessMemory::usedMegabytes() - before, loaded / 5);
}

TEST_F(EngineRegistryTest, changedVocabularyUnloadsModel)
{
    registry().warmUp(u"en_US"_s);
    settle();
    ASSERT_TRUE(embedded->isLoaded());
    registry().setWords({u"Kubernetes"_s});
    settle();
    EXPECT_FALSE(embedded->isLoaded());
    registry().setWords({u"Kubernetes"_s});
    registry().warmUp(u"en_US"_s);
    settle();
    EXPECT_TRUE(embedded->isLoaded());
}

} // namespace talmo::test
