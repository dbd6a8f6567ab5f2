// Real speech, recogniser and windows. Only sentences that the engine reliably recognises are asserted word by word.

#include "EndToEnd/TalmoFixture.h"

#include "Support/Printing.h"

#include <QFile>

namespace talmo::test {

using namespace std::chrono_literals;

using DictationEndToEndTest = TalmoFixture;

TEST_F(DictationEndToEndTest, holdingKeyDictatesIntoQtProgram)
{
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    EXPECT_TRUE(talmoSays(u"state: idle"_s));
    EXPECT_EQ(desktop.activeWindowTitle(), u"Target"_s);
    EXPECT_EQ(quitTalmo(), 0);
}

TEST_F(DictationEndToEndTest, holdingKeyDictatesIntoGtkProgram)
{
    openWindow(QStringLiteral(TALMO_BIN "/talmo-gtk-window"));
    startTalmo();
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    EXPECT_EQ(quitTalmo(), 0);
}

TEST_F(DictationEndToEndTest, holdingKeyDictatesIntoXterm)
{
    const QString file = desktop.folder() + u"/typed"_s;
    QFile(file).open(QFile::WriteOnly);
    openWindow(u"xterm"_s, {u"-T"_s, u"Target"_s, u"-e"_s, u"sh"_s, u"-c"_s, u"stty -icanon; cat > '%1'"_s.arg(file)});
    startTalmo();
    copy(u"clipboard before"_s);
    copy(u"selected before"_s, u"primary"_s);
    dictate(u"hello world"_s);
    EXPECT_TRUE(talmoSays(u"state: idle"_s));
    const auto typed = [&file] {
        QFile reader(file);
        return reader.open(QFile::ReadOnly) ? reader.readAll() : QByteArray();
    };
    EXPECT_TRUE(testbed::pollUntil([&typed] { return typed() == "Hello world."; }, timeout)) << typed().constData();
    EXPECT_TRUE(testbed::pollUntil([this] { return selection(u"primary"_s) == "selected before\n"; }, timeout));
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "clipboard before\n"; }, timeout));
}

TEST_F(DictationEndToEndTest, doubleTapDictatesHandsFreeUntilNextPress)
{
    openQtWindow();
    startTalmo();
    doubleTap();
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    speak(u"hello world"_s);
    keyboard.press(key);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    keyboard.release(key);
    EXPECT_TRUE(talmoSays(u"state: idle"_s));
}

TEST_F(DictationEndToEndTest, insertsTextWhileRightCtrlIsHeld)
{
    openQtWindow();
    startTalmo();
    doubleTap();
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    speak(u"thank you very much"_s);
    keyboard.press(key); // Stops recording; stays down until the text arrives.
    EXPECT_TRUE(talmoSays(u"state: idle"_s));
    EXPECT_TRUE(windowShows(u"Thank you very much."_s));
    keyboard.release(key);
}

TEST_F(DictationEndToEndTest, heldShiftAndSuperDoNotBreakPaste)
{
    openQtWindow();
    startTalmo();
    keyboard.press(key);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    speak(u"hello world"_s);
    keyboard.press(testbed::VirtualKeyboard::shiftLeft);
    keyboard.press(testbed::VirtualKeyboard::superLeft);
    keyboard.release(key);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    keyboard.release(testbed::VirtualKeyboard::superLeft);
    keyboard.release(testbed::VirtualKeyboard::shiftLeft);
}

TEST_F(DictationEndToEndTest, pastesOnKeyboardWithoutLatinLetters)
{
    testbed::ChildProcess layout(u"setxkbmap"_s, {u"ru"_s}, environment);
    ASSERT_TRUE(testbed::waitUntil([&layout] { return !layout.isRunning(); }, timeout));
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
}

TEST_F(DictationEndToEndTest, twoDictationsWithinASecondArriveAndRestoreClipboard)
{
    openQtWindow();
    startTalmo();
    copy(u"clipboard before"_s);
    dictate(u"hello world"_s);
    ASSERT_TRUE(talmoSays(u"state: idle"_s));
    testbed::sleepFor(310ms); // Just longer than the double-tap window.
    dictate(u"thank you very much"_s);
    EXPECT_TRUE(windowShows(u"Hello world. Thank you very much."_s));
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "clipboard before\n"; }, timeout));
}

TEST_F(DictationEndToEndTest, rightCtrlAsModifierRecordsNothing)
{
    openQtWindow();
    startTalmo();
    for (int round = 0; round < 3; ++round) {
        keyboard.press(key);
        keyboard.tap('a');
        keyboard.release(key);
        testbed::sleepFor(50ms);
    }
    // Immediately: the press is deferred and then counts.
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    int recordings = 0;
    for (const auto &line : talmo->lines()) {
        recordings += line.text.contains(u"state: recording"_s) ? 1 : 0;
    }
    EXPECT_EQ(recordings, 1);
}

TEST_F(DictationEndToEndTest, silenceReportsNoSpeechAndNextDictationWorks)
{
    openQtWindow();
    startTalmo();
    keyboard.press(key);
    ASSERT_TRUE(talmoSays(u"state: recording"_s));
    keyboard.release(key);
    EXPECT_TRUE(talmoSays(u"error: No speech detected."_s));
    EXPECT_TRUE(talmoSays(u"state: error"_s));
    testbed::sleepFor(350ms); // Longer than the double-tap window.
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
}

} // namespace talmo::test
