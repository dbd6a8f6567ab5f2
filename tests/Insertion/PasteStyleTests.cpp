#include "Insertion/PasteStyle.h"

#include "Support/Printing.h"

#include <gmock/gmock.h>

namespace talmo::test {

TEST(PasteStyle, isChosenByProgram)
{
    EXPECT_EQ(pasteStyleFor(u"gedit"_s, u"Gedit"_s), PasteStyle::ControlV);
    EXPECT_EQ(pasteStyleFor(u"gnome-terminal-server"_s, u"Gnome-terminal"_s), PasteStyle::ControlShiftV);
    EXPECT_EQ(pasteStyleFor(u"konsole"_s, u"konsole"_s), PasteStyle::ControlShiftV);
    EXPECT_EQ(pasteStyleFor(u"xterm"_s, u"XTerm"_s), PasteStyle::ShiftInsertPrimary);
    EXPECT_EQ(pasteStyleFor(u"urxvt"_s, u"URxvt"_s), PasteStyle::ShiftInsertPrimary);
    EXPECT_EQ(pasteStyleFor(u"emacs"_s, u"Emacs"_s), PasteStyle::ShiftInsert);
    EXPECT_EQ(pasteStyleFor(QString(), QString()), PasteStyle::ControlV);
}

TEST(PasteStyle, shortcutsAreThoseThatMessagesMayName)
{
    for (const auto style :
         {PasteStyle::ControlV, PasteStyle::ControlShiftV, PasteStyle::ShiftInsertPrimary, PasteStyle::ShiftInsert}) {
        EXPECT_TRUE(shortcutNames().contains(shortcutName(style))) << shortcutName(style).toStdString();
    }
}

TEST(PasteStyle, virtualMachinesAndWindowsProgramsImportTheClipboard)
{
    EXPECT_TRUE(importsClipboard(u"NOTEPAD.EXE"_s, u"notepad.exe"_s));
    EXPECT_FALSE(importsClipboard(u"gedit"_s, u"Gedit"_s));
}

} // namespace talmo::test
