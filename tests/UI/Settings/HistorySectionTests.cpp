#include "UI/Settings/HistorySection.h"

#include "Support/FakeDictationOptions.h"
#include "Support/FakePasteboard.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "UI/AccessibleView.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QListWidget>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

class HistorySectionTest : public testing::Test {
protected:
    HistorySectionTest() { section.show(); }
    QAbstractButton *button(const QString &name)
    {
        return qobject_cast<QAbstractButton *>(accessibleWidget(section, QAccessible::Button, name));
    }
    QListWidget &list() { return *section.findChild<QListWidget *>(); }
    void add(const QString &text)
    {
        history->add(text);
        settle();
    }

    std::shared_ptr<FakeDictationOptions> options = std::make_shared<FakeDictationOptions>();
    std::shared_ptr<DictationHistory> history = std::make_shared<DictationHistory>(options);
    std::shared_ptr<FakePasteboard> pasteboard = std::make_shared<FakePasteboard>();
    HistorySection section{options, history,
                           std::make_shared<DictationRecovery>(std::make_shared<LastDictation>(), pasteboard, nullptr)};
};

} // namespace

TEST_F(HistorySectionTest, showsListOnlyWhileItIsKept)
{
    auto *toggle = section.findChild<QCheckBox *>();
    EXPECT_FALSE(toggle->isChecked());
    EXPECT_FALSE(list().isVisible());
    toggle->click();
    settle();
    EXPECT_TRUE(options->isOn(DictationOption::KeepHistory));
    EXPECT_TRUE(list().isVisible());
    EXPECT_FALSE(button(u"Clear"_s)->isEnabled());
    add(u"first"_s);
    add(u"second\nline"_s);
    ASSERT_EQ(list().count(), 2);
    EXPECT_EQ(list().item(0)->text(), u"second line"_s);
    toggle->click();
    settle();
    EXPECT_FALSE(list().isVisible());
    EXPECT_EQ(list().count(), 0);
}

TEST_F(HistorySectionTest, copiesTheWholeText)
{
    options->setOn(DictationOption::KeepHistory, true);
    settle();
    add(u"two\nlines"_s);
    EXPECT_FALSE(button(u"Copy"_s)->isEnabled());
    list().setCurrentRow(0);
    button(u"Copy"_s)->click();
    EXPECT_THAT(pasteboard->calls, testing::Contains("setString two\nlines"));
}

TEST_F(HistorySectionTest, clearEmptiesTheHistory)
{
    options->setOn(DictationOption::KeepHistory, true);
    add(u"first"_s);
    button(u"Clear"_s)->click();
    settle();
    EXPECT_EQ(list().count(), 0);
    EXPECT_TRUE(history->texts().isEmpty());
}

} // namespace talmo::test
