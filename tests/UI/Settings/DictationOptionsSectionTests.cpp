#include "UI/Settings/DictationOptionsSection.h"

#include "Support/FakeDictationOptions.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <QCheckBox>

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

QCheckBox *switchNamed(const QWidget &section, const QString &name)
{
    for (auto *toggle : section.findChildren<QCheckBox *>()) {
        if (toggle->text() == name) {
            return toggle;
        }
    }
    return nullptr;
}

} // namespace

TEST(DictationOptionsSection, showsAndChangesTheOption)
{
    const auto options = std::make_shared<FakeDictationOptions>();
    options->values[DictationOption::SpaceBetween] = true;
    const DictationOptionsSection section(options);
    auto *toggle = switchNamed(section, u"Space between dictations"_s);
    ASSERT_NE(toggle, nullptr);
    EXPECT_TRUE(toggle->isChecked());
    toggle->click();
    EXPECT_FALSE(options->isOn(DictationOption::SpaceBetween));
    options->setOn(DictationOption::SpaceBetween, true);
    settle();
    EXPECT_TRUE(toggle->isChecked());
}

} // namespace talmo::test
