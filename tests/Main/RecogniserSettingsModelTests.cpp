#include "Main/RecogniserSettingsModel.h"

#include "Platform/Linux/System/LinuxSettings.h"
#include "Recognition/PocketSphinx/PocketSphinxEngine.h"
#include "Recognition/UnusableModel.h"
#include "Support/ManualClock.h"
#include "Support/MemoryUserDefaults.h"
#include "Support/Printing.h"
#include "Support/ScriptedEngine.h"
#include "Support/TestLoop.h"
#include "Support/TranslatedDesktop.h"

#include <QDir>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::Contains;

class English final : public LocaleSource {
public:
    QString currentIdentifier() const override { return u"en_US"_s; }
};

/// Installed models are folders here; those named "offline" give no text while somebody speaks.
class RecogniserSettingsModelTest : public testing::Test {
protected:
    RecogniserSettingsModelTest()
    {
        EngineFactory factory;
        factory.engine = u"scripted"_s;
        factory.make = [](const QString &name, const QString &) {
            if (name.contains(u"damaged"_s)) {
                throw UnusableModel(u"/home/name/damaged has no encoder"_s);
            }
            return std::make_shared<ScriptedEngine>(name, !name.contains(u"offline"_s));
        };
        factory.isLibraryInstalled = [] { return true; };
        factories = {std::make_shared<PocketSphinxEngine>(), {factory}};
    }
    void addModel(const QString &name) { ASSERT_TRUE(QDir(folder.path()).mkdir(name)); }
    RecogniserSettingsModel &model()
    {
        if (!made) {
            EngineRegistry::Configuration configuration;
            configuration.models = {folder.path(), factories, [](const SpeechEngine &, const QString &) {}};
            engines = std::make_shared<EngineRegistry>(SerialExecutor::onCurrentThread(), clock, configuration);
            EXPECT_TRUE(waitFor(engines->modelsChecked()));
            const ModelInstaller installer(ModelStore(folder.path()), clock,
                                           [](const QString &) { return std::nullopt; });
            models = std::make_shared<SpeechModels>(
                RecogniserInstaller(installer, installer, clock,
                                    [](const ModelEntry &) { return std::vector<ModelEntry>(); }),
                ModelCatalogue(), [](const ModelEntry &) { return true; });
            made = std::make_unique<RecogniserSettingsModel>(engines, models, defaults, factories,
                                                             std::make_shared<English>());
        }
        return *made;
    }
    static QStringList ids(const QList<RecogniserSettings::Choice> &choices)
    {
        QStringList ids;
        for (const auto &choice : choices) {
            ids.append(choice.id);
        }
        return ids;
    }
    QString stored() const { return defaults->string(LinuxSettings::speechEngineKey()).value_or(QString()); }

    QTemporaryDir folder;
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::shared_ptr<MemoryUserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
    EngineFactories factories;
    std::shared_ptr<EngineRegistry> engines;
    std::shared_ptr<SpeechModels> models;
    std::unique_ptr<RecogniserSettingsModel> made;
};

} // namespace

TEST_F(RecogniserSettingsModelTest, explainsDamagedModelWithoutPaths)
{
    addModel(u"damaged"_s);
    model().choose(u"damaged"_s);
    EXPECT_EQ(model().choiceProblem(), u"This speech model cannot be used. Install it again."_s);
    const TranslatedDesktop german(u"de_DE"_s);
    EXPECT_EQ(model().choiceProblem(), u"Dieses Erkennungsmodell ist nicht verwendbar. Bitte neu installieren."_s);
}

TEST_F(RecogniserSettingsModelTest, progressIsInTheUsersLanguage)
{
    ModelEntry entry;
    entry.id = u"model"_s;
    model();
    models->install(entry);
    const TranslatedDesktop german(u"de_DE"_s);
    const auto installation = model().installation();
    ASSERT_TRUE(installation.has_value());
    EXPECT_EQ(installation->description, u"Wird heruntergeladen: 0 MB"_s);
    models->cancel();
    EXPECT_TRUE(waitFor([this] { return !models->installation().has_value(); }));
}

TEST_F(RecogniserSettingsModelTest, liveTextIsChosenOnlyWithOfflineModel)
{
    addModel(u"streaming"_s);
    EXPECT_TRUE(model().liveChoices().isEmpty());
    EXPECT_EQ(model().choices().first().title, u"Automatic (best installed)"_s);
    addModel(u"offline"_s);
    EXPECT_TRUE(waitFor(engines->lookForModels()));
    EXPECT_EQ(ids(model().liveChoices()), (QStringList{u"automatic"_s, u"none"_s, u"embedded"_s, u"streaming"_s}));
    EXPECT_EQ(model().liveChoices().first().title, u"Recommended"_s);
    EXPECT_EQ(model().choices().first().title, u"Recommended"_s);
    EXPECT_THAT(ids(model().choices()), Contains(u"offline"_s));
}

TEST_F(RecogniserSettingsModelTest, choosingOneTextKeepsTheOther)
{
    addModel(u"streaming"_s);
    addModel(u"offline"_s);
    model().chooseLive(u"streaming"_s);
    EXPECT_EQ(stored(), u"streaming+automatic"_s);
    model().choose(u"offline"_s);
    EXPECT_EQ(stored(), u"streaming+offline"_s);
    EXPECT_EQ(engines->choice(), u"streaming+offline"_s);
    model().chooseLive(u"automatic"_s);
    EXPECT_EQ(stored(), u"offline"_s);
    EXPECT_EQ(model().liveChoice(), u"automatic"_s);
}

TEST_F(RecogniserSettingsModelTest, reportsRemovedModelOfLiveText)
{
    addModel(u"offline"_s);
    model().chooseLive(u"none"_s);
    EXPECT_EQ(model().choiceProblem(), QString());
    model().chooseLive(u"embedded"_s);
    EXPECT_EQ(model().choiceProblem(), QString());
    model().chooseLive(u"removed"_s);
    EXPECT_THAT(ids(model().liveChoices()), Contains(u"removed"_s));
    EXPECT_EQ(model().choiceProblem(), u"The model for the live text is not installed; text appears when you pause."_s);
}

} // namespace talmo::test
