#include "UI/Settings/DictionarySettingsTab.h"

#include "UI/AccessibleView.h"
#include "UI/ViewWorld.h"

#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <QToolButton>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

class DictionaryTabTest : public testing::Test {
protected:
    DictionaryTabTest()
    {
        world.settings->setDictionaryWords({u"Talmo"_s, u"Terraform"_s, u"Kubernetes"_s});
        settle();
        tab.show();
    }
    QLineEdit &field() { return *tab.findChild<QLineEdit *>(); }
    QListWidget &list() { return *tab.findChild<QListWidget *>(); }
    QStringList shown()
    {
        QStringList words;
        for (int row = 0; row < list().count(); ++row) {
            words.append(list().item(row)->text());
        }
        return words;
    }
    void select(std::initializer_list<int> rows)
    {
        list().clearSelection();
        for (const int row : rows) {
            list().item(row)->setSelected(true);
        }
    }

    ViewWorld world;
    DictionarySettingsTab tab{world.context()};
};

} // namespace

TEST_F(DictionaryTabTest, hasExpectedTexts)
{
    EXPECT_EQ(
        accessibleNames(tab, QAccessible::StaticText),
        (QStringList{
            u"Words and phrases you add here are passed to the cleanup step as context so they're preserved exactly, instead of being \"corrected\" away."_s,
            u"Each is heard as well as written your way."_s}));
    EXPECT_EQ(field().placeholderText(), u"Add a word or phrase"_s);
    EXPECT_EQ(shown(), (QStringList{u"Talmo"_s, u"Terraform"_s, u"Kubernetes"_s}));
}

TEST_F(DictionaryTabTest, returnAddsTrimmedWordAndClearsField)
{
    QTest::keyClicks(&field(), u"  Cloud Formation "_s);
    QTest::keyClick(&field(), Qt::Key_Return);
    EXPECT_EQ(world.settings->dictionaryWords().last(), u"Cloud Formation"_s);
    EXPECT_EQ(shown().last(), u"Cloud Formation"_s);
    EXPECT_EQ(field().text(), QString());
}

TEST_F(DictionaryTabTest, blankInputAddsNothingAndIsCleared)
{
    QTest::keyClicks(&field(), u"   "_s);
    QTest::keyClick(&field(), Qt::Key_Return);
    EXPECT_EQ(world.settings->dictionaryWords().size(), 3);
    EXPECT_EQ(field().text(), QString());
}

TEST_F(DictionaryTabTest, deleteKeyRemovesSelection)
{
    select({0, 2});
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(world.settings->dictionaryWords(), QStringList{u"Terraform"_s});
    EXPECT_EQ(shown(), QStringList{u"Terraform"_s});
    select({0});
    QTest::keyClick(&list(), Qt::Key_Backspace);
    EXPECT_TRUE(world.settings->dictionaryWords().isEmpty());
    QTest::keyClick(&list(), Qt::Key_Delete); // The list is empty; nothing happens.
    EXPECT_TRUE(world.settings->dictionaryWords().isEmpty());
}

TEST_F(DictionaryTabTest, deleteButtonIsEnabledOnlyWithSelection)
{
    auto *remove = qobject_cast<QToolButton *>(accessibleWidget(tab, QAccessible::Button, u"Delete"_s));
    ASSERT_NE(remove, nullptr);
    EXPECT_FALSE(remove->isEnabled());
    select({1});
    EXPECT_TRUE(remove->isEnabled());
    remove->click();
    EXPECT_EQ(world.settings->dictionaryWords(), (QStringList{u"Talmo"_s, u"Kubernetes"_s}));
    // The next word is selected, so that several can be deleted in a row.
    EXPECT_EQ(list().currentRow(), 1);
}

TEST_F(DictionaryTabTest, removesEqualWordsByPosition)
{
    world.settings->setDictionaryWords({u"same"_s, u"other"_s, u"same"_s});
    settle();
    select({2});
    QTest::keyClick(&list(), Qt::Key_Delete);
    EXPECT_EQ(world.settings->dictionaryWords(), (QStringList{u"same"_s, u"other"_s}));
}

TEST_F(DictionaryTabTest, followsSettingAndKeepsSelectionIfUnchanged)
{
    select({1});
    world.settings->setConciseTextEnabled(true);
    settle();
    EXPECT_EQ(list().selectedItems().size(), 1);
    world.settings->setDictionaryWords({u"only"_s});
    settle();
    EXPECT_EQ(shown(), QStringList{u"only"_s});
}

} // namespace talmo::test
