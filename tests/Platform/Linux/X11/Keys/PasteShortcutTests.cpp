#include "Platform/Linux/X11/Keys/PasteShortcut.h"

#include "Support/Printing.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;

namespace {

constexpr std::uint8_t shift = 50;
constexpr std::uint8_t control = 37;
constexpr std::uint8_t rightControl = 105;
constexpr std::uint8_t alt = 64;
constexpr std::uint8_t super = 133;
constexpr std::uint8_t keyV = 55;
constexpr std::uint8_t insert = 118;

ChordKey down(std::uint8_t keyCode)
{
    return {keyCode, true};
}
ChordKey up(std::uint8_t keyCode)
{
    return {keyCode, false};
}

/// A keyboard with two layouts, each with these letters on the V key.
KeyboardLayout keyboard(xcb_keysym_t first = 'v', xcb_keysym_t second = 0)
{
    KeyboardLayout layout;
    layout.firstKeyCode = 8;
    layout.keySymsPerKeyCode = 4;
    layout.keySyms.assign(248 * 4, 0);
    layout.keySyms[(keyV - 8) * 4] = first;
    layout.keySyms[(keyV - 8) * 4 + 2] = second;
    layout.keySyms[(insert - 8) * 4] = 0xff63;
    layout.modifierKeys[0] = {shift};
    layout.modifierKeys[2] = {control, rightControl};
    layout.modifierKeys[3] = {alt};
    layout.modifierKeys[6] = {super};
    return layout;
}

} // namespace

TEST(PossibleStyle, staysWithLatinV)
{
    for (const auto style :
         {PasteStyle::ControlV, PasteStyle::ControlShiftV, PasteStyle::ShiftInsert, PasteStyle::ShiftInsertPrimary}) {
        EXPECT_EQ(possibleStyle(keyboard(), style), style);
        EXPECT_EQ(possibleStyle(keyboard(0x6cd, 'v'), style), style) << "in another layout of the keyboard";
    }
}

TEST(PossibleStyle, withoutLatinVTerminalsPastePrimarySelection)
{
    const auto layout = keyboard(0x6cd); // Cyrillic.
    EXPECT_EQ(possibleStyle(layout, PasteStyle::ControlShiftV), PasteStyle::ShiftInsertPrimary);
    EXPECT_EQ(possibleStyle(layout, PasteStyle::ControlV), PasteStyle::ShiftInsert);
    EXPECT_EQ(possibleStyle(layout, PasteStyle::ShiftInsert), PasteStyle::ShiftInsert);
    EXPECT_EQ(possibleStyle(layout, PasteStyle::ShiftInsertPrimary), PasteStyle::ShiftInsertPrimary);
}

TEST(PasteShortcut, isControlVByDefault)
{
    EXPECT_THAT(pasteShortcut(keyboard(), PasteStyle::ControlV),
                ElementsAre(down(control), down(keyV), up(keyV), up(control)));
}

TEST(PasteShortcut, isControlShiftVForTerminals)
{
    EXPECT_THAT(pasteShortcut(keyboard(), PasteStyle::ControlShiftV),
                ElementsAre(down(control), down(shift), down(keyV), up(keyV), up(shift), up(control)));
}

TEST(PasteShortcut, releasesHeldModifiersFirstAndLeavesThemUp)
{
    auto layout = keyboard();
    layout.heldKeys = {super, alt, rightControl, shift};
    EXPECT_THAT(pasteShortcut(layout, PasteStyle::ControlV),
                ElementsAre(up(shift), up(alt), up(super), down(control), down(keyV), up(keyV), up(control)));
    EXPECT_THAT(
        pasteShortcut(layout, PasteStyle::ShiftInsertPrimary),
        ElementsAre(up(shift), up(alt), up(super), up(rightControl), down(shift), down(insert), up(insert), up(shift)));
}

TEST(PasteShortcut, prefersActiveLayoutOverOthers)
{
    auto russianFirst = keyboard(0x6cd, 'v');
    EXPECT_EQ(keyCodeFor(russianFirst, 'v'), keyV);
    auto both = keyboard('v', 0);
    both.keySyms[(60 - 8) * 4 + 2] = 'v';
    EXPECT_EQ(keyCodeFor(both, 'v'), keyV);
    both.group = 1;
    EXPECT_EQ(keyCodeFor(both, 'v'), 60);
}

TEST(PasteShortcut, isShiftInsertIfNoLayoutHasLatinV)
{
    EXPECT_THAT(pasteShortcut(keyboard(0x6cd, 0), PasteStyle::ControlV),
                ElementsAre(down(shift), down(insert), up(insert), up(shift)));
}

TEST(PasteShortcut, isEmptyIfKeyboardHasNeither)
{
    auto layout = keyboard(0, 0);
    layout.keySyms[(insert - 8) * 4] = 0;
    EXPECT_TRUE(pasteShortcut(layout, PasteStyle::ControlV).empty());
    EXPECT_TRUE(pasteShortcut(KeyboardLayout{}, PasteStyle::ControlV).empty());
}

} // namespace talmo::test
