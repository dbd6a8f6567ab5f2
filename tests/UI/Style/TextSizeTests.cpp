// The views with the system's font at its ordinary size and at twice that, from left to right and from right to left.

#include "Support/FakeDictationOptions.h"
#include "Support/FakeHotkeySettings.h"
#include "Support/FakeLanguageSettings.h"
#include "Support/FakeMicrophoneSettings.h"
#include "Support/FakePasswordFieldSettings.h"
#include "Support/FakePronunciations.h"
#include "Support/FakeRecogniserSettings.h"
#include "UI/Menu/MenuBarView.h"
#include "UI/Overlay/RecordingOverlay.h"
#include "UI/Overlay/RecordingOverlayController.h"
#include "UI/Picker.h"
#include "UI/Settings/SettingsTabBar.h"
#include "UI/Settings/SettingsView.h"
#include "UI/Settings/SettingsWindow.h"
#include "UI/Settings/WelcomeView.h"
#include "UI/Style/Appearance.h"
#include "UI/Style/TintedLabel.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QToolButton>

#include <tuple>

namespace talmo::test {

namespace {

/// The usable area of a low and narrow screen, without the room that a window's frame needs.
constexpr QSize lowScreen(1366, 768);
constexpr int aroundWindow = 60;

class SystemFont {
public:
    explicit SystemFont(qreal points)
    {
        QFont font = m_before;
        font.setPointSizeF(points);
        QApplication::setFont(font);
    }
    ~SystemFont() { QApplication::setFont(m_before); }
    SystemFont(const SystemFont &) = delete;
    SystemFont &operator=(const SystemFont &) = delete;

private:
    QFont m_before = QApplication::font();
};

struct FullWorld : ViewWorld {
    FullWorld()
    {
        settings->setHotkeyDisplayName(u"Right Ctrl"_s);
        unavailability = u"The on-device language model isn't available right now."_s;
        recogniser = std::make_shared<FakeRecogniserSettings>();
        options = std::make_shared<FakeDictationOptions>();
        microphone = std::make_shared<FakeMicrophoneSettings>();
        hotkeys = std::make_shared<FakeHotkeySettings>();
        language = std::make_shared<FakeLanguageSettings>();
        pronunciations = std::make_shared<FakePronunciations>();
        passwordFields = std::make_shared<FakePasswordFieldSettings>();
    }
};

/// What of this is wider or higher than its place; empty if it is all there.
QStringList cutIn(const QWidget &view)
{
    QStringList cut;
    const auto check = [&cut](const QWidget &widget, const QString &text, QSize needed) {
        if (widget.isVisible() && (widget.width() < needed.width() || widget.height() < needed.height())) {
            cut.append(u"%1: %2x%3 of %4x%5"_s.arg(text.left(30))
                           .arg(widget.width())
                           .arg(widget.height())
                           .arg(needed.width())
                           .arg(needed.height()));
        }
    };
    for (const auto *label : view.findChildren<QLabel *>()) {
        const QSize needed = label->wordWrap() ? QSize(1, label->heightForWidth(label->width())) : label->sizeHint();
        check(*label, label->text(), needed);
    }
    for (const auto *button : view.findChildren<QAbstractButton *>()) {
        check(*button, button->text(), button->text().isEmpty() ? QSize() : button->sizeHint());
    }
    for (const auto *child : view.findChildren<QWidget *>()) {
        if (!child->isVisible() || child->isWindow()) {
            continue;
        }
        const QRect place(child->mapTo(&view, QPoint(0, 0)), child->size());
        if (place.left() < 0 || place.right() >= view.width()) {
            cut.append(u"%1 at %2..%3 of %4"_s.arg(QLatin1String(child->metaObject()->className()))
                           .arg(place.left())
                           .arg(place.right())
                           .arg(view.width()));
        }
    }
    return cut;
}

class TextSizeTest : public testing::TestWithParam<std::tuple<qreal, Qt::LayoutDirection>> {
protected:
    TextSizeTest() { QApplication::setLayoutDirection(std::get<1>(GetParam())); }
    ~TextSizeTest() override { QApplication::setLayoutDirection(Qt::LayoutDirectionAuto); }

    void show(QWidget &view, QSize size)
    {
        view.resize(size);
        view.show();
        settle();
    }

    SystemFont font{std::get<0>(GetParam())};
    FullWorld world;
};

} // namespace

TEST_P(TextSizeTest, nothingInSettingsIsCut)
{
    SettingsView settings(world.context());
    const int width = std::min(Appearance::scaled(540), lowScreen.width() - aroundWindow);
    show(settings, QSize(width, lowScreen.height() - aroundWindow));
    auto *tabs = settings.findChild<SettingsTabBar *>();
    ASSERT_EQ(tabs->count(), 4);
    for (int page = 0; page < tabs->count(); ++page) {
        settings.showPage(page);
        settle();
        EXPECT_THAT(cutIn(settings), testing::IsEmpty()) << "page " << page;
    }
}

TEST_P(TextSizeTest, nothingInWelcomeIsCut)
{
    WelcomeView welcome(world.context(), [] {});
    show(welcome, QSize(Appearance::scaled(540), lowScreen.height() - aroundWindow));
    EXPECT_THAT(cutIn(welcome), testing::IsEmpty());
}

TEST_P(TextSizeTest, menuFitsOnLowScreen)
{
    world.setPermissions(false, false, false);
    MenuBarView menu(world.context(), [](MenuAction) {});
    show(menu, menu.sizeHint());
    EXPECT_THAT(cutIn(menu), testing::IsEmpty());
    EXPECT_LE(menu.sizeHint().width(), lowScreen.width());
    EXPECT_LE(menu.sizeHint().height(), lowScreen.height());
}

TEST_P(TextSizeTest, cardHoldsItsTitleAndHint)
{
    RecordingOverlay overlay(world.coordinator());
    world.beRecording();
    world.hear(u"thank you very much for the report I will read it on the train"_s);
    const QSize size = overlay.idealSize();
    EXPECT_LE(size.width(), lowScreen.width());
    EXPECT_GE(size.width(), Appearance::scaled(RecordingOverlay::smallestWidth));
    show(overlay, size);
    EXPECT_GE(size.height(), QFontMetrics(Appearance::font(Appearance::titleSize)).height() * 2);
}

INSTANTIATE_TEST_SUITE_P(TextSize, TextSizeTest,
                         testing::Combine(testing::Values(9, 10, 15, 20),
                                          testing::Values(Qt::LeftToRight, Qt::RightToLeft)),
                         [](const auto &each) {
                             return std::to_string(int(std::get<0>(each.param))) +
                                    (std::get<1>(each.param) == Qt::LeftToRight ? "LeftToRight" : "RightToLeft");
                         });

TEST(TextSize, followsSystemFont)
{
    {
        const SystemFont ordinary(10);
        EXPECT_EQ(Appearance::font(13).pixelSize(), 13);
    }
    {
        const SystemFont small(7);
        EXPECT_EQ(Appearance::font(13).pixelSize(), 13);
    }
    const SystemFont large(20);
    EXPECT_EQ(Appearance::font(13).pixelSize(), 26);
    EXPECT_EQ(Appearance::scaled(300), 600);
}

TEST(Picker, longEntryEndsInEllipsis)
{
    const auto pictureOf = [](const QString &entry) {
        Picker picker;
        picker.addItem(entry);
        picker.resize(200, 30);
        QImage image(picker.size(), QImage::Format_ARGB32_Premultiplied);
        picker.render(&image);
        return image;
    };
    const QString entry = u"System default (Remapped Monitor of Null Output)"_s;
    const QImage shown = pictureOf(entry);
    bool isFound = false;
    for (qsizetype length = 1; length < entry.size() && !isFound; ++length) {
        isFound = shown == pictureOf(entry.left(length) + u"…"_s);
    }
    EXPECT_TRUE(isFound);
}

TEST(TextSize, openSettingsFollowChangedFont)
{
    FullWorld world;
    SettingsWindow window(world.context(), std::make_shared<FakeScreens>());
    window.open();
    auto *before = window.findChild<QCheckBox *>();
    const int size = before->font().pixelSize();
    window.findChild<SettingsView *>()->showPage(1);
    const SystemFont large(20);
    settle();
    EXPECT_EQ(window.findChild<QCheckBox *>()->font().pixelSize(), 2 * size);
    EXPECT_EQ(window.findChild<SettingsView *>()->page(), 1);
    window.close();
}

} // namespace talmo::test
