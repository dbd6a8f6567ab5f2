// Contrast, measured in pictures of what is shown: 4.5 for text and 3 for shapes.

#include "Support/FakeRecogniserSettings.h"
#include "UI/Measuring.h"
#include "UI/Menu/MenuRow.h"
#include "UI/Settings/RecogniserSection.h"
#include "UI/Settings/SettingsSection.h"
#include "UI/Settings/SettingsTabBar.h"
#include "UI/Settings/WarningRow.h"
#include "UI/Settings/Words/WordList.h"
#include "UI/Style/SymbolLabel.h"
#include "UI/Style/TintedLabel.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QStyleOptionButton>

namespace talmo::test {

namespace {

/// Colours of a desktop whose links and selected rows are hard to read.
QPalette faintDesktop()
{
    QPalette palette(QColor(0xfc, 0xfc, 0xfc), QColor(0xef, 0xf0, 0xf1));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0xae, 0xe9));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x29, 0x80, 0xb9));
    return palette;
}

struct Colours {
    const char *name;
    QPalette palette;
};

void PrintTo(const Colours &colours, std::ostream *out)
{
    *out << colours.name;
}

class ContrastTest : public testing::TestWithParam<Colours> {
protected:
    ContrastTest() { QApplication::setPalette(GetParam().palette); }
    ~ContrastTest() override { QApplication::setPalette(QApplication::style()->standardPalette()); }

    /// Shows it as it is shown in the settings: on the surface of a group.
    void onSurface(QWidget *widget)
    {
        section.addWidget(widget);
        section.resize(400, section.sizeHint().height());
        section.show();
        settle();
    }
    QColor surface()
    {
        const QImage image = magnified(section);
        return image.pixelColor(image.width() / 2, 4 * 4); // Between the frame and the first row.
    }
    qreal contrastOf(const QWidget &widget)
    {
        return largestContrast(magnified(section), surface(), areaIn(section, widget));
    }

    SettingsSection section;
};

} // namespace

TEST_P(ContrastTest, uncheckedBoxIsSeen)
{
    auto *toggle = section.addToggle({}, {});
    onSurface(new QWidget);
    EXPECT_GE(contrastOf(*toggle), Appearance::shapeContrast);
    EXPECT_FALSE(toggle->isChecked());
    const auto unchecked = magnified(section);
    toggle->setChecked(true);
    EXPECT_GE(contrastOf(*toggle), Appearance::shapeContrast);
    EXPECT_NE(magnified(section), unchecked);
}

TEST_P(ContrastTest, warningIsReadable)
{
    auto *warning = new WarningRow;
    warning->setText(u"The microphone gives only silence."_s);
    onSurface(warning);
    for (const auto *part : warning->findChildren<QWidget *>()) {
        EXPECT_GE(contrastOf(*part), Appearance::textContrast);
    }
}

TEST_P(ContrastTest, successAndCaptionsAreReadable)
{
    auto *success = new SymbolLabel(u"checkmark.circle.fill"_s, &Appearance::green);
    auto *caption = TintedLabel::caption(u"What this does."_s);
    section.addWidget(success);
    onSurface(caption);
    EXPECT_GE(contrastOf(*success), Appearance::shapeContrast);
    EXPECT_GE(contrastOf(*caption), Appearance::textContrast);
}

TEST_P(ContrastTest, linkIsReadable)
{
    auto *link = new QLabel(u"<a href=\"https://example.org\">CC-BY-SA-4.0</a>"_s);
    link->setFont(Appearance::font(Appearance::captionSize));
    onSurface(link);
    EXPECT_GE(contrastOf(*link), Appearance::textContrast);
}

TEST_P(ContrastTest, tabsAreReadable)
{
    SettingsTabBar tabs;
    tabs.addSymbolTab(u"gearshape"_s, u"General"_s);
    tabs.addSymbolTab(u"lock.shield"_s, u"Privacy"_s);
    tabs.resize(tabs.sizeHint());
    tabs.show();
    settle();
    const QImage image = magnified(tabs);
    for (int index = 0; index < tabs.count(); ++index) {
        const qreal ratio = qreal(image.width()) / tabs.width();
        const QRect tab = tabs.tabRect(index).adjusted(6, 3, -6, -3);
        const QRect area(tab.topLeft() * ratio, tab.size() * ratio);
        const QColor ground = image.pixelColor(area.center().x(), area.top()); // Above the symbol.
        EXPECT_GE(largestContrast(image, ground, area), Appearance::textContrast) << index;
    }
}

TEST_P(ContrastTest, selectedMenuRowIsReadable)
{
    MenuRow row;
    row.setContents(u"gearshape"_s, u"Settings"_s, u"Ctrl+,"_s);
    row.resize(300, row.sizeHint().height());
    row.show();
    row.activateWindow();
    row.setFocus();
    settle();
    ASSERT_TRUE(row.hasFocus());
    const QImage image = magnified(row);
    const QColor selected = image.pixelColor(image.width() / 2, 8);
    EXPECT_EQ(selected, row.palette().color(QPalette::Highlight));
    EXPECT_GE(largestContrast(image, selected, image.rect().adjusted(40, 40, -40, -40)), Appearance::textContrast);
}

TEST_P(ContrastTest, selectedWordIsReadable)
{
    WordList list;
    list.setFont(Appearance::font(Appearance::titleSize));
    list.addItem(u"Nguyen"_s);
    list.setSound(0, u"win"_s);
    list.resize(300, 60);
    list.show();
    list.setCurrentRow(0);
    settle();
    const QRect row = list.visualItemRect(list.item(0));
    const QImage image = magnified(*list.viewport());
    const QRect area(row.topLeft() * 4, row.size() * 4);
    const QColor selected = image.pixelColor(area.center().x(), area.center().y()); // Between word and sound.
    EXPECT_EQ(selected, list.palette().color(QPalette::Highlight));
    for (const QRect &half :
         {area.adjusted(16, 16, -area.width() / 2, -16), area.adjusted(area.width() / 2, 16, -16, -16)}) {
        EXPECT_GE(largestContrast(image, selected, half), Appearance::textContrast);
    }
}

INSTANTIATE_TEST_SUITE_P(Contrast, ContrastTest,
                         testing::Values(Colours{"light", Appearance::palette(ColourScheme::Light)},
                                         Colours{"dark", Appearance::palette(ColourScheme::Dark)},
                                         Colours{"desktop", Appearance::legible(faintDesktop())}),
                         [](const auto &each) { return std::string(each.param.name); });

TEST(Contrast, isThatOfTheGuidelines)
{
    EXPECT_NEAR(Appearance::contrast(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(Appearance::contrast(Qt::white, Qt::black), 21, 0.01);
    EXPECT_NEAR(Appearance::contrast(Qt::red, Qt::red), 1, 0.01);
    EXPECT_NEAR(Appearance::contrast(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.01);
}

TEST(Contrast, changesColourOnlyAsMuchAsNeeded)
{
    const QColor red(0xc0, 0x20, 0x20);
    EXPECT_EQ(Appearance::legible(red, Qt::white, 4.5), red);
    const QColor yellow(0xf0, 0xe0, 0x20);
    const QColor darker = Appearance::legible(yellow, Qt::white, 4.5);
    EXPECT_GE(Appearance::contrast(darker, Qt::white), 4.5);
    EXPECT_LT(Appearance::contrast(darker, Qt::white), 6);
    EXPECT_GE(Appearance::contrast(Appearance::legible(Qt::blue, Qt::black, 4.5), Qt::black), 4.5);
}

} // namespace talmo::test
