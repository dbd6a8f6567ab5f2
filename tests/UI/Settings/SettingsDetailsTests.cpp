// The settings window in detail: mouse wheel, changing lists, and markup in texts.

#include "Support/FakeRecogniserSettings.h"
#include "UI/Menu/MenuBarView.h"
#include "UI/Settings/DictionarySettingsTab.h"
#include "UI/Settings/RecogniserSection.h"
#include "UI/Settings/SettingsView.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QTest>
#include <QWheelEvent>

namespace talmo::test {

namespace {

/// Whether the widget consumed the wheel event rather than leaving it to the page.
bool turnWheel(QWidget &widget)
{
    QWheelEvent event(widget.rect().center(), widget.mapToGlobal(widget.rect().center()), {}, QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    event.ignore();
    QApplication::sendEvent(&widget, &event);
    return event.isAccepted();
}

class DictionaryChangesTest : public testing::Test {
protected:
    DictionaryChangesTest()
    {
        world.settings->setDictionaryWords({u"one"_s, u"two"_s, u"three"_s});
        settle();
        tab.show();
    }
    QListWidget &list() { return *tab.findChild<QListWidget *>(); }
    void select(int row)
    {
        list().clearSelection();
        list().item(row)->setSelected(true);
    }
    void remove() { QTest::keyClick(&list(), Qt::Key_Delete); }
    QStringList words() { return world.settings->dictionaryWords(); }
    QStringList selected()
    {
        QStringList texts;
        for (const auto *item : list().selectedItems()) {
            texts.append(item->text());
        }
        return texts;
    }

    ViewWorld world;
    DictionarySettingsTab tab{world.context()};
};

} // namespace

TEST(Pickers, wheelOverClosedPickerChangesNothing)
{
    ViewWorld world;
    world.recogniser = std::make_shared<FakeRecogniserSettings>();
    SettingsView view(world.context());
    view.resize(540, 300);
    view.show();
    world.defaults->takeWrites();
    const auto pickers = view.findChildren<QComboBox *>();
    ASSERT_EQ(pickers.size(), 4);
    for (auto *picker : pickers) {
        const int before = picker->currentIndex();
        EXPECT_FALSE(turnWheel(*picker)) << picker->accessibleName().toStdString();
        EXPECT_EQ(picker->currentIndex(), before) << picker->accessibleName().toStdString();
        EXPECT_EQ(picker->focusPolicy(), Qt::StrongFocus) << "the wheel does not move the focus";
    }
    settle();
    EXPECT_TRUE(world.defaults->writes.empty());
}

TEST_F(DictionaryChangesTest, removesSelectedWordFromListGrownMeanwhile)
{
    select(1);
    world.settings->addDictionaryWord(u"four"_s); // Announced but not shown yet.
    remove();
    EXPECT_EQ(words(), (QStringList{u"one"_s, u"three"_s, u"four"_s}));
}

TEST_F(DictionaryChangesTest, removesWordThatHasMoved)
{
    select(1);
    world.settings->setDictionaryWords({u"zero"_s, u"one"_s, u"two"_s, u"three"_s});
    settle();
    EXPECT_EQ(selected(), QStringList{u"two"_s});
    remove();
    EXPECT_EQ(words(), (QStringList{u"zero"_s, u"one"_s, u"three"_s}));
}

TEST_F(DictionaryChangesTest, removesNothingIfWordIsGone)
{
    select(1);
    world.settings->setDictionaryWords({u"one"_s, u"three"_s});
    world.defaults->takeWrites();
    remove(); // Before the list is refreshed.
    EXPECT_EQ(words(), (QStringList{u"one"_s, u"three"_s}));
    settle();
    EXPECT_TRUE(selected().isEmpty());
    remove(); // And after it.
    EXPECT_EQ(words(), (QStringList{u"one"_s, u"three"_s}));
    EXPECT_TRUE(world.defaults->writes.empty());
}

TEST_F(DictionaryChangesTest, removesSelectedOneOfEqualWords)
{
    world.settings->setDictionaryWords({u"same"_s, u"a"_s, u"same"_s, u"b"_s, u"same"_s});
    settle();
    select(2);
    world.settings->setDictionaryWords({u"new"_s, u"same"_s, u"a"_s, u"same"_s, u"b"_s, u"same"_s});
    remove();
    EXPECT_EQ(words(), (QStringList{u"new"_s, u"same"_s, u"a"_s, u"b"_s, u"same"_s}));
    EXPECT_EQ(selected(), QStringList{u"b"_s}) << "the word now at its position";
}

TEST_F(DictionaryChangesTest, selectsPreviousWordAfterRemovingLast)
{
    select(2);
    remove();
    EXPECT_EQ(selected(), QStringList{u"two"_s});
    remove();
    remove();
    EXPECT_TRUE(words().isEmpty());
}

TEST_F(DictionaryChangesTest, showsMarkupInWordVerbatim)
{
    world.settings->setDictionaryWords({u"<b>bold</b>"_s});
    settle();
    EXPECT_EQ(list().item(0)->text(), u"<b>bold</b>"_s);
}

TEST(PlainText, labelsTreatNamesAsPlainText)
{
    ViewWorld world;
    const auto recogniser = std::make_shared<FakeRecogniserSettings>();
    recogniser->allModels[0].title = u"<b>model</b>"_s;
    recogniser->allModels[0].detail = u"<i>detail</i>"_s;
    recogniser->wrongChoice = u"<u>wrong</u>"_s;
    world.recogniser = recogniser;
    world.unavailability = u"<b>no model</b>"_s;
    world.settings->setHotkeyDisplayName(u"<b>F13</b>"_s);
    SettingsView settings(world.context());
    MenuBarView menu(world.context(), [](MenuAction) {});
    settings.show();
    menu.show();
    world.fail(u"<b>broken</b>"_s);
    int labels = 0;
    for (const QWidget *view : {static_cast<QWidget *>(&settings), static_cast<QWidget *>(&menu)}) {
        for (const auto *label : view->findChildren<QLabel *>()) {
            // Only the licence label needs markup, for its link; names in it are escaped.
            const bool isLink = label->openExternalLinks();
            EXPECT_EQ(label->textFormat(), isLink ? Qt::RichText : Qt::PlainText) << label->text().toStdString();
            ++labels;
        }
    }
    EXPECT_GT(labels, 25);
}

TEST(PlainText, licenceNameIsEscaped)
{
    ViewWorld world;
    const auto recogniser = std::make_shared<FakeRecogniserSettings>();
    for (auto &model : recogniser->allModels) {
        model.licence = u"A & <B>"_s;
        model.licenceAddress = QUrl();
    }
    RecogniserSection section(recogniser);
    const auto labels = section.findChildren<QLabel *>();
    const auto link = std::find_if(labels.begin(), labels.end(),
                                   [](const QLabel *label) { return label->textFormat() == Qt::RichText; });
    ASSERT_NE(link, labels.end());
    EXPECT_EQ((*link)->text(), u"Licence: A &amp; &lt;B&gt;"_s);
}

TEST(PlainText, tooltipEscapesErrorText)
{
    MenuContents contents;
    contents.title = u"Reading & writing failed."_s;
    EXPECT_EQ(contents.toolTip(), contents.title);
    contents.title = u"<b>broken</b>"_s;
    EXPECT_EQ(contents.toolTip(), u"&lt;b&gt;broken&lt;/b&gt;"_s);
}

} // namespace talmo::test
