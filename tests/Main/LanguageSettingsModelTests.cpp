#include "Main/LanguageSettingsModel.h"

#include "Platform/Linux/System/LinuxSettings.h"
#include "Support/FakeRecogniserSettings.h"
#include "Support/MadeUpEngine.h"
#include "Support/ManualClock.h"
#include "Support/MemoryUserDefaults.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <algorithm>

namespace talmo::test {

namespace {

using testing::ElementsAre;

const char *const catalogue = R"({"models": [
    {"id": "a", "engine": "made-up", "title": "A", "licence": "MIT", "languages": ["de"], "address": "https://example.org/a"},
    {"id": "b", "engine": "made-up", "title": "B", "licence": "MIT", "languages": ["de", "fr"],
     "address": "https://example.org/b"}]})";

/// A user whose only recogniser knows English.
class LanguageSettingsModelTest : public testing::Test {
protected:
    LanguageSettingsModelTest()
        : engines(std::make_shared<EngineRegistry>(SerialExecutor::onCurrentThread(), std::make_shared<ManualClock>(),
                                                   configuration()))
    {
    }
    EngineRegistry::Configuration configuration() const
    {
        EngineRegistry::Configuration made;
        made.models = {models.path(), {std::make_shared<MadeUpEngine>(), {}}, [](const auto &, const auto &) {}};
        return made;
    }
    void finishScan() { ASSERT_TRUE(waitFor(engines->modelsChecked())); }
    QStringList titles() const
    {
        QStringList all;
        for (const auto &choice : model.choices()) {
            all.append(choice.title);
        }
        return all;
    }
    std::optional<QString> stored() const { return defaults->string(LinuxSettings::dictationLanguageKey()); }

    QTemporaryDir models;
    std::shared_ptr<MemoryUserDefaults> defaults = std::make_shared<MemoryUserDefaults>();
    std::shared_ptr<SystemLocaleSource> locale = std::make_shared<SystemLocaleSource>(QStringLiteral("en"));
    std::shared_ptr<EngineRegistry> engines;
    std::shared_ptr<FakeRecogniserSettings> recogniser = std::make_shared<FakeRecogniserSettings>();
    LanguageSettingsModel model{defaults, locale, engines, recogniser, ModelCatalogue::parse(catalogue)};
};

} // namespace

TEST_F(LanguageSettingsModelTest, offersTheDesktopsLanguageThenEachOnceByTitle)
{
    const auto all = titles();
    ASSERT_EQ(all.size(), 4);
    EXPECT_TRUE(all.first().startsWith(u"System language ("_s)) << qPrintable(all.first());
    EXPECT_THAT(all.mid(1), ElementsAre(u"English"_s, u"French"_s, u"German"_s));
    EXPECT_EQ(model.choices().first().id, QString());
}

TEST_F(LanguageSettingsModelTest, keepsLanguageThatOnlyTheFileNames)
{
    locale->setDictationLanguage(u"en_GB"_s);
    EXPECT_EQ(titles().last(), u"English (United Kingdom)"_s);
    EXPECT_EQ(model.choice(), u"en_GB"_s);
}

TEST_F(LanguageSettingsModelTest, choiceIsStoredAndInForceAtOnce)
{
    int announcements = 0;
    QObject::connect(&model, &Observable::objectWillChange, &model, [&] { ++announcements; });
    model.choose(u"fr"_s);
    EXPECT_EQ(locale->currentIdentifier(), u"fr"_s);
    EXPECT_EQ(stored(), u"fr"_s);
    EXPECT_EQ(announcements, 2) << "its own, and that other models are offered now";
    model.choose({});
    EXPECT_EQ(stored(), QString());
    EXPECT_EQ(locale->currentIdentifier(), SystemLocaleSource().currentIdentifier());
}

TEST_F(LanguageSettingsModelTest, tellsOfLanguageWithoutRecogniserOnceModelsAreKnown)
{
    model.choose(u"de_AT"_s);
    EXPECT_EQ(model.problem(), QString()) << "a German model may be installed";
    finishScan();
    EXPECT_EQ(model.problem(), u"Dictating in German needs another recogniser."_s);
    model.useEnglish();
    EXPECT_EQ(model.problem(), QString());
    EXPECT_EQ(stored(), u"en"_s);
}

TEST_F(LanguageSettingsModelTest, setsUpWhatTheRecogniserOffers)
{
    EXPECT_FALSE(model.canSetUp());
    recogniser->offered = {u"German, 67 MB."_s, u"67 MB"_s};
    EXPECT_TRUE(model.canSetUp());
    model.setUp();
    EXPECT_THAT(recogniser->calls, ElementsAre("accept offer"));
}

} // namespace talmo::test
