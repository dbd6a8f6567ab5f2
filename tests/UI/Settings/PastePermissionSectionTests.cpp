#include "UI/Settings/PastePermissionSection.h"

#include "UI/Settings/PrivacySettingsTab.h"
#include "UI/ViewWorld.h"

#include <QCheckBox>
#include <QLabel>

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

class FakePastePermission final : public PastePermission {
public:
    bool isNeeded() const override { return needed; }
    bool isAllowed() const override { return allowed; }
    QString problem() const override { return wrong; }
    void setAllowed(bool isAllowed) override { publish(allowed, isAllowed); }
    void refuse(const QString &problem)
    {
        publish(allowed, false);
        publish(wrong, problem);
    }

    bool needed = true;
    bool allowed = false;
    QString wrong;
};

bool says(const QWidget &widget, const QString &text)
{
    for (const auto *label : widget.findChildren<QLabel *>()) {
        if (label->isVisibleTo(&widget) && label->text() == text) {
            return true;
        }
    }
    return false;
}

} // namespace

TEST(PastePermissionSection, switchAsksAndShowsRefusal)
{
    ViewWorld world;
    const auto permission = std::make_shared<FakePastePermission>();
    auto context = world.context();
    context.pastePermission = permission;
    PrivacySettingsTab tab(context);
    tab.show();
    auto *toggle = tab.findChild<QCheckBox *>();
    ASSERT_NE(toggle, nullptr);
    EXPECT_EQ(toggle->text(), u"Paste with the desktop's remote control"_s);
    EXPECT_FALSE(toggle->isChecked());
    toggle->click();
    EXPECT_TRUE(permission->allowed);
    EXPECT_FALSE(says(tab, u"Refused."_s));
    permission->refuse(u"Refused."_s);
    settle();
    EXPECT_FALSE(toggle->isChecked());
    EXPECT_TRUE(says(tab, u"Refused."_s));
}

TEST(PastePermissionSection, isHiddenWhileTalmoPastesWithoutIt)
{
    const auto permission = std::make_shared<FakePastePermission>();
    permission->needed = false;
    const PastePermissionSection section(permission);
    EXPECT_TRUE(section.isHidden());
}

} // namespace talmo::test
