#include "UI/Settings/DesktopExtensionSection.h"

#include "Support/FakeDesktopExtension.h"
#include "UI/FindViews.h"
#include "UI/ViewWorld.h"

#include <QVBoxLayout>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

class DesktopExtensionSectionTest : public testing::Test {
protected:
    void open(DesktopExtensionSection::Shown shown)
    {
        auto *section = new DesktopExtensionSection(extension, shown);
        window.layout()->addWidget(section);
        window.setAttribute(Qt::WA_DontShowOnScreen);
        window.show();
        settle();
    }
    void change(const DesktopExtension::Status &status)
    {
        extension->setStatus(status);
        settle();
    }
    const QString missing = u"It is missing."_s;
    const QString enabled = u"It is enabled."_s;
    std::shared_ptr<FakeDesktopExtension> extension =
        std::make_shared<FakeDesktopExtension>(DesktopExtension::Status());
    QWidget window;
    QVBoxLayout layout{&window};
};

} // namespace

TEST_F(DesktopExtensionSectionTest, isEnabledByOneClick)
{
    open(DesktopExtensionSection::Shown::Always);
    EXPECT_EQ(extension->refreshes, 1);
    EXPECT_EQ(buttonNamed(window, u"Enable the extension"_s), nullptr);
    change({missing, true, true});
    EXPECT_TRUE(shows(window, missing));
    buttonNamed(window, u"Enable the extension"_s)->click();
    EXPECT_EQ(extension->enablings, 1);
    change({enabled, false, false});
    EXPECT_TRUE(shows(window, enabled));
    EXPECT_FALSE(shows(window, missing));
    EXPECT_EQ(buttonNamed(window, u"Enable the extension"_s), nullptr);
}

TEST_F(DesktopExtensionSectionTest, welcomeShowsItOnlyWhileMissing)
{
    open(DesktopExtensionSection::Shown::WhileMissing);
    change({enabled, false, false});
    EXPECT_FALSE(shows(window, enabled));
    change({missing, true, false});
    EXPECT_TRUE(shows(window, missing));
    EXPECT_EQ(buttonNamed(window, u"Enable the extension"_s), nullptr);
    change({});
    EXPECT_FALSE(shows(window, u"This desktop"_s));
    change({missing, true, false});
    EXPECT_TRUE(shows(window, missing));
}

} // namespace talmo::test
