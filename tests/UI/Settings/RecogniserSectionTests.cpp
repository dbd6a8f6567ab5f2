#include "UI/Settings/RecogniserSection.h"

#include "Support/FakeLanguageSettings.h"
#include "Support/FakeRecogniserSettings.h"
#include "UI/AccessibleView.h"
#include "UI/Settings/SettingsView.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

#include <QComboBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTabBar>

#include <algorithm>

namespace talmo::test {

namespace {

using testing::ElementsAre;

class RecogniserSectionTest : public testing::Test {
protected:
    RecogniserSectionTest() { section.show(); }
    QComboBox &picker(const QString &name)
    {
        const auto pickers = section.findChildren<QComboBox *>();
        return **std::find_if(pickers.begin(), pickers.end(),
                              [&name](const QComboBox *each) { return each->accessibleName() == name; });
    }
    QPushButton &offerButton() { return *section.findChildren<QPushButton *>().first(); }
    /// The one beside the models.
    QPushButton &button() { return *section.findChildren<QPushButton *>().last(); }
    QProgressBar &bar() { return *section.findChild<QProgressBar *>(); }
    QString texts() { return accessibleNames(section, QAccessible::StaticText).join(u'\n'); }
    /// Selects an entry as a user does.
    void select(QComboBox &combo, int index)
    {
        combo.setCurrentIndex(index);
        Q_EMIT combo.activated(index);
    }
    void changed()
    {
        settings->change();
        settle();
    }

    std::shared_ptr<FakeRecogniserSettings> settings = std::make_shared<FakeRecogniserSettings>();
    RecogniserSection section{settings};
};

} // namespace

TEST_F(RecogniserSectionTest, choosesRecogniser)
{
    auto &choice = picker(u"Recogniser"_s);
    EXPECT_EQ(choice.currentText(), u"Automatic (best installed)"_s);
    select(choice, 1);
    settle();
    EXPECT_THAT(settings->calls, ElementsAre("choose embedded"));
    EXPECT_EQ(choice.currentData().toString(), u"embedded"_s);
}

TEST_F(RecogniserSectionTest, showsChoiceMadeElsewhere)
{
    settings->allChoices.append({u"kroko-de"_s, u"German: Kroko"_s});
    settings->chosen = u"kroko-de"_s;
    settings->wrongChoice = u"The model is damaged."_s;
    changed();
    EXPECT_EQ(picker(u"Recogniser"_s).currentText(), u"German: Kroko"_s);
    EXPECT_TRUE(texts().contains(u"The model is damaged."_s));
    EXPECT_TRUE(settings->calls.empty());
}

TEST_F(RecogniserSectionTest, choosesLiveAndFinalTextWithOfflineModel)
{
    EXPECT_FALSE(picker(u"Live text"_s).isVisible());
    EXPECT_FALSE(texts().contains(u"live text"_s));
    settings->allChoices = {{u"automatic"_s, u"Recommended"_s}, {u"parakeet-v2"_s, u"English (Parakeet)"_s}};
    settings->allLiveChoices = {{u"automatic"_s, u"Recommended"_s},
                                {u"none"_s, u"None until you pause"_s},
                                {u"kroko-en"_s, u"English (Kroko)"_s}};
    changed();
    auto &live = picker(u"Live text"_s);
    auto &final = picker(u"Final text"_s);
    EXPECT_TRUE(live.isVisible());
    EXPECT_EQ(live.currentText(), u"Recommended"_s);
    EXPECT_EQ(final.currentText(), u"Recommended"_s);
    EXPECT_TRUE(texts().contains(u"Live text"_s));
    EXPECT_TRUE(texts().contains(u"Final text"_s));
    EXPECT_TRUE(texts().contains(u"The live text is shown while you speak."_s));
    select(live, 2);
    select(final, 1);
    settle();
    EXPECT_THAT(settings->calls, ElementsAre("choose live kroko-en", "choose parakeet-v2"));
    EXPECT_EQ(live.currentData().toString(), u"kroko-en"_s);
    EXPECT_EQ(final.currentData().toString(), u"parakeet-v2"_s);
}

TEST_F(RecogniserSectionTest, oneRecogniserIsChosenOnceOfflineModelIsRemoved)
{
    settings->allLiveChoices = {{u"automatic"_s, u"Recommended"_s}};
    changed();
    EXPECT_TRUE(picker(u"Live text"_s).isVisible());
    settings->allLiveChoices.clear();
    changed();
    EXPECT_FALSE(picker(u"Live text"_s).isVisible());
    EXPECT_TRUE(picker(u"Recogniser"_s).isVisible());
    EXPECT_FALSE(texts().contains(u"Live text"_s));
}

TEST_F(RecogniserSectionTest, showsLicenceBeforeInstallation)
{
    EXPECT_TRUE(texts().contains(u"Favours the words in your dictionary."_s));
    EXPECT_TRUE(texts().contains(u"Apache-2.0"_s));
    EXPECT_EQ(button().text(), u"Install"_s);
    button().click();
    EXPECT_THAT(settings->calls, ElementsAre("install zipformer-en"));
}

TEST_F(RecogniserSectionTest, removesInstalledModel)
{
    select(picker(u"Model"_s), 1);
    EXPECT_EQ(button().text(), u"Remove"_s);
    button().click();
    EXPECT_THAT(settings->calls, ElementsAre("remove kroko-de"));
}

TEST_F(RecogniserSectionTest, showsInstallationProgressAndCancels)
{
    EXPECT_FALSE(bar().isVisible());
    settings->underWay = {u"zipformer-en"_s, u"Downloading: 12 of 48 MB"_s, 0.25};
    changed();
    EXPECT_TRUE(bar().isVisible());
    EXPECT_EQ(bar().value() * 4, bar().maximum());
    EXPECT_TRUE(texts().contains(u"Downloading: 12 of 48 MB"_s));
    EXPECT_EQ(button().text(), u"Cancel"_s);
    button().click();
    EXPECT_THAT(settings->calls, ElementsAre("cancel"));

    settings->underWay->share = std::nullopt;
    changed();
    EXPECT_EQ(bar().maximum(), 0); // Indeterminate.
    select(picker(u"Model"_s), 1);
    EXPECT_FALSE(button().isEnabled()); // Only one installation at a time.

    settings->underWay = std::nullopt;
    changed();
    EXPECT_FALSE(bar().isVisible());
    EXPECT_EQ(picker(u"Model"_s).currentData().toString(), u"kroko-de"_s);
}

TEST_F(RecogniserSectionTest, oneButtonInstallsBetterRecognition)
{
    EXPECT_FALSE(offerButton().isVisible());
    settings->offered = {u"Kroko (English), 67 MB. Licences: Apache-2.0, CC-BY-SA-4.0."_s, u"67 MB"_s};
    changed();
    EXPECT_TRUE(offerButton().isVisible());
    EXPECT_EQ(offerButton().text(), u"Get better recognition"_s);
    EXPECT_TRUE(texts().contains(u"Kroko (English), 67 MB. Licences: Apache-2.0, CC-BY-SA-4.0."_s));
    offerButton().click();
    EXPECT_THAT(settings->calls, ElementsAre("accept offer"));
    settings->underWay = {u"kroko-de"_s, u"Downloading: 12 of 67 MB, 3.0 MB/s, 18 s left"_s, 0.2};
    changed();
    EXPECT_FALSE(offerButton().isVisible());
    EXPECT_EQ(picker(u"Model"_s).currentData().toString(), u"kroko-de"_s); // Its button cancels.
    EXPECT_EQ(button().text(), u"Cancel"_s);
    EXPECT_TRUE(bar().isVisible());
}

TEST_F(RecogniserSectionTest, showsError)
{
    settings->wrongInstallation = u"Not enough disk space."_s;
    changed();
    EXPECT_TRUE(texts().contains(u"Not enough disk space."_s));
    settings->wrongInstallation.clear();
    changed();
    EXPECT_FALSE(texts().contains(u"Not enough disk space."_s));
}

TEST_F(RecogniserSectionTest, withoutLibraryModelsCanOnlyBeRemoved)
{
    settings->wrongLibrary = u"The library is missing."_s;
    changed();
    EXPECT_TRUE(texts().contains(u"The library is missing."_s));
    EXPECT_FALSE(button().isEnabled());
    select(picker(u"Model"_s), 1);
    EXPECT_TRUE(button().isEnabled());
}

/// What the recogniser is chosen with; null if there is no choice.
static QComboBox *recogniserPicker(const SettingsView &settings)
{
    for (auto *picker : settings.findChildren<QComboBox *>()) {
        if (picker->accessibleName() == u"Recogniser"_s) {
            return picker;
        }
    }
    return nullptr;
}

TEST(SettingsView, hasTabForRecogniserIfThereIsAChoice)
{
    ViewWorld world;
    SettingsView without(world.context());
    EXPECT_EQ(without.findChild<QTabBar *>()->count(), 3);
    EXPECT_EQ(recogniserPicker(without), nullptr);
    world.recogniser = std::make_shared<FakeRecogniserSettings>();
    SettingsView settings(world.context());
    const auto *tabs = settings.findChild<QTabBar *>();
    ASSERT_EQ(tabs->count(), 4);
    EXPECT_EQ(tabs->tabText(3), u"Recogniser"_s);
    settings.show();
    const auto *picker = recogniserPicker(settings);
    EXPECT_FALSE(picker->isVisible());
    settings.showRecogniser();
    EXPECT_TRUE(picker->isVisible());
}

TEST(SettingsView, showsInstallationThatWasAskedForElsewhere)
{
    ViewWorld world;
    world.recogniser = std::make_shared<FakeRecogniserSettings>();
    const auto language = std::make_shared<FakeLanguageSettings>();
    language->wrong = u"Dictating in German needs another recogniser."_s;
    world.language = language;
    SettingsView settings(world.context());
    settings.show();
    for (auto *button : settings.findChildren<QPushButton *>()) {
        if (button->text() == u"Set it up"_s) {
            button->click();
        }
    }
    EXPECT_TRUE(recogniserPicker(settings)->isVisible());
}

} // namespace talmo::test
