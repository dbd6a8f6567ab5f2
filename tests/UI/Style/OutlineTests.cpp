// Fonts, paddings and sizes in the settings and the menu.

#include "Support/FakeRecogniserSettings.h"
#include "UI/DrawnView.h"
#include "UI/Menu/MenuBarView.h"
#include "UI/Settings/DictionarySettingsTab.h"
#include "UI/Settings/GeneralSettingsTab.h"
#include "UI/Settings/PrivacySettingsTab.h"
#include "UI/Settings/RecogniserSection.h"
#include "UI/Settings/SettingsView.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

#include <QScrollArea>

#include <algorithm>

namespace talmo::test {

namespace {

/// Whether the outline contains these lines one after the other. What is before or after them does not matter.
bool holds(const QStringList &outline, const QStringList &lines)
{
    return std::search(outline.begin(), outline.end(), lines.begin(), lines.end()) != outline.end();
}

} // namespace

TEST(Outline, generalTabMatches)
{
    ViewWorld world;
    GeneralSettingsTab tab(world.context());
    const QStringList outline = outlineOf(tab);
    EXPECT_PRED2(holds, outline,
                 (QStringList{u"VBoxLayout 0,0,0,0 spacing 14"_s, u"VBoxLayout 0,0,0,0 spacing 6"_s,
                              u"label 13/600 “Push-to-talk” 2,0,0,0"_s, u"VBoxLayout 14,12,14,12 spacing 4"_s,
                              u"HBoxLayout 0,0,0,0 spacing 4"_s, u"label 13/400 “Shortcut” 0,0,0,0"_s, u"gap 0"_s,
                              u"label 12/500 “fn” 9,3,9,4"_s}));
    EXPECT_PRED2(holds, outline,
                 (QStringList{u"VBoxLayout 0,0,0,0 spacing 6"_s, u"label 13/600 “Cleanup” 2,0,0,0"_s,
                              u"VBoxLayout 14,12,14,12 spacing 4"_s, u"button 13/400 “Enable AI cleanup”"_s,
                              u"HBoxLayout 20,0,0,0 spacing 4"_s, u"label 11/400 “Uses Apple's on-de” 0,0,0,0"_s}));
    EXPECT_PRED2(holds, outline,
                 (QStringList{u"HBoxLayout 20,0,0,0 spacing 4"_s, u"HBoxLayout 0,2,0,0 spacing 6"_s, u"16x16"_s,
                              u"label 11/400 “” 0,0,0,0"_s}));
    EXPECT_PRED2(
        holds, outline,
        (QStringList{u"height 9"_s, u"button 13/400 “Concise text”"_s, u"HBoxLayout 20,0,0,0 spacing 4"_s,
                     u"label 11/400 “Actively trims fil” 0,0,0,0"_s, u"height 9"_s, u"HBoxLayout 0,0,0,0 spacing 4"_s,
                     u"label 13/400 “Tone” 0,0,0,0"_s, u"gap 0"_s, u"picker 13/400 “Tone”"_s,
                     u"label 11/400 “Rewrites dictation” 0,0,0,0"_s, u"height 9"_s}));
    EXPECT_PRED2(holds, outline,
                 (QStringList{u"label 11/400 “Say it and it happ” 0,0,0,0"_s, u"HBoxLayout 2,0,0,0 spacing 4"_s,
                              u"14x14"_s, u"label 11/400 “\"...as bullet poin” 0,0,0,0"_s}));
    EXPECT_PRED2(
        holds, outline,
        (QStringList{u"HBoxLayout 2,0,0,0 spacing 4"_s, u"14x14"_s, u"label 11/400 “\"...new paragraph.” 0,0,0,0"_s,
                     u"HBoxLayout 2,0,0,0 spacing 4"_s, u"14x14"_s, u"label 11/400 “\"...new line...\" →” 0,0,0,0"_s}));
    EXPECT_PRED2(holds, outline,
                 (QStringList{u"label 13/600 “Startup” 2,0,0,0"_s, u"VBoxLayout 14,12,14,12 spacing 4"_s,
                              u"button 13/400 “Launch at login”"_s, u"gap 0"_s}));
}

TEST(Outline, dictionaryTabMatches)
{
    ViewWorld world;
    DictionarySettingsTab tab(world.context());
    const QStringList outline = outlineOf(tab);
    EXPECT_PRED2(holds, outline,
                 (QStringList{u"VBoxLayout 0,0,0,0 spacing 8"_s, u"label 11/400 “Words and phrases ” 0,0,0,0"_s,
                              u"label 11/400 “Each is heard as w” 0,0,0,0"_s, u"HBoxLayout 0,0,0,0 spacing 6"_s,
                              u"field 13/400 “Add a word or phra” from height 28"_s, u"button -1/400 “” 28x28"_s,
                              u"VBoxLayout 0,0,0,0 spacing 4"_s, u"list 13/400 “Dictionary” spacing 2"_s,
                              u"HBoxLayout 0,0,0,0 spacing 6"_s, u"button -1/400 “” 28x28"_s}));
}

TEST(Outline, privacyTabMatches)
{
    ViewWorld world;
    PrivacySettingsTab tab(world.context());
    const QStringList outline = outlineOf(tab);
    EXPECT_PRED2(holds, outline,
                 (QStringList{u"VBoxLayout 0,0,0,0 spacing 14"_s,
                              u"VBoxLayout 0,0,0,0 spacing 6"_s,
                              u"VBoxLayout 14,12,14,12 spacing 4"_s,
                              u"HBoxLayout 0,0,0,0 spacing 6"_s,
                              u"20x20"_s,
                              u"label 13/500 “Audio and transcri” 0,0,0,0"_s,
                              u"label 11/400 “Talmo has no backe” 0,0,0,0"_s,
                              u"VBoxLayout 0,0,0,0 spacing 6"_s,
                              u"VBoxLayout 14,12,14,12 spacing 4"_s,
                              u"HBoxLayout 0,0,0,0 spacing 8"_s,
                              u"16x16"_s,
                              u"label 13/400 “Microphone” 0,0,0,0"_s,
                              u"gap 0"_s,
                              u"button 12/400 “Open Settings…”"_s,
                              u"height 9"_s,
                              u"HBoxLayout 0,0,0,0 spacing 8"_s,
                              u"16x16"_s,
                              u"label 13/400 “Speech Recognition” 0,0,0,0"_s,
                              u"gap 0"_s,
                              u"button 12/400 “Open Settings…”"_s,
                              u"height 9"_s,
                              u"HBoxLayout 0,0,0,0 spacing 8"_s,
                              u"16x16"_s,
                              u"label 13/400 “Accessibility” 0,0,0,0"_s,
                              u"gap 0"_s,
                              u"button 12/400 “Open Settings…”"_s,
                              u"gap 0"_s}));
}

TEST(Outline, recogniserSectionMatches)
{
    RecogniserSection section(std::make_shared<FakeRecogniserSettings>());
    const QStringList outline = outlineOf(section);
    EXPECT_PRED2(holds, outline,
                 (QStringList{u"VBoxLayout 0,0,0,0 spacing 6"_s,
                              u"VBoxLayout 0,0,0,0 spacing 6"_s,
                              u"label 13/600 “Recogniser” 2,0,0,0"_s,
                              u"VBoxLayout 14,12,14,12 spacing 4"_s,
                              u"HBoxLayout 0,0,0,0 spacing 4"_s,
                              u"label 13/400 “Live text” 0,0,0,0"_s,
                              u"gap 0"_s,
                              u"picker 13/400 “Live text”"_s,
                              u"HBoxLayout 0,0,0,0 spacing 4"_s,
                              u"label 13/400 “Recogniser” 0,0,0,0"_s,
                              u"gap 0"_s,
                              u"picker 13/400 “Recogniser”"_s,
                              u"label 11/400 “The live text is s” 0,0,0,0"_s,
                              u"HBoxLayout 0,2,0,0 spacing 6"_s,
                              u"16x16"_s,
                              u"label 11/400 “” 0,0,0,0"_s,
                              u"label 11/400 “Speech is recognis” 0,0,0,0"_s,
                              u"button 13/400 “Get better recogni”"_s,
                              u"label 11/400 “” 0,0,0,0"_s,
                              u"height 9"_s,
                              u"HBoxLayout 0,0,0,0 spacing 4"_s,
                              u"label 13/400 “Model” 0,0,0,0"_s,
                              u"gap 0"_s,
                              u"picker 13/400 “Model”"_s,
                              u"button 13/400 “Install”"_s}));
    EXPECT_PRED2(
        holds, outline,
        (QStringList{u"label 11/400 “Licence: <a href=\"” 0,0,0,0"_s, u"height 9"_s, u"label 11/400 “” 0,0,0,0"_s,
                     u"HBoxLayout 0,2,0,0 spacing 6"_s, u"16x16"_s, u"label 11/400 “” 0,0,0,0"_s}));
}

TEST(Outline, menuMatches)
{
    ViewWorld world;
    world.setPermissions(false, true, true);
    MenuBarView view(world.context(), [](MenuAction) {});
    const QStringList outline = outlineOf(view);
    EXPECT_PRED2(
        holds, outline,
        (QStringList{u"VBoxLayout 8,12,8,8 spacing 0"_s, u"VBoxLayout 0,0,0,0 spacing 4"_s,
                     u"label 13/600 “Talmo needs permis” 0,0,0,0"_s, u"button 12/400 “Details”"_s, u"gap 2"_s,
                     u"label 12/400 “” 8,0,8,0"_s, u"gap 2"_s, u"height 11"_s, u"VBoxLayout 8,2,8,0 spacing 6"_s,
                     u"HBoxLayout 0,0,0,0 spacing 6"_s, u"16x16"_s, u"label 12/400 “Microphone access ” 0,0,0,0"_s,
                     u"button 13/400 “Grant Permissions…”"_s, u"height 11"_s}));
    EXPECT_PRED2(holds, outline,
                 (QStringList{u"button 13/400 “Start Recording”"_s, u"button 13/400 “”"_s, u"height 11"_s,
                              u"button 13/400 “Settings”"_s, u"button 13/400 “Quit Talmo”"_s}));
}

TEST(Outline, settingsWindowMatches)
{
    ViewWorld world;
    SettingsView view(world.context());
    QStringList lines;
    for (const auto &line : outlineOf(view)) {
        if (!line.startsWith(u"label"_s)) {
            lines.append(line);
        }
    }
    EXPECT_EQ(lines, (QStringList{u"VBoxLayout 0,8,0,0 spacing 8"_s, u"tabs 11/500 “”"_s, u"height 1"_s,
                                  u"StackedLayout 9,9,9,9 spacing 6"_s}));
    const auto areas = view.findChildren<QScrollArea *>();
    ASSERT_EQ(areas.size(), 3);
    for (const auto *area : areas) {
        EXPECT_EQ(margins(area->widget()->layout()->contentsMargins()), u"18,10,18,18"_s);
        EXPECT_TRUE(area->widgetResizable());
        EXPECT_EQ(area->frameShape(), QFrame::NoFrame);
        EXPECT_EQ(area->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        EXPECT_EQ(area->focusPolicy(), Qt::NoFocus);
    }
}

} // namespace talmo::test
