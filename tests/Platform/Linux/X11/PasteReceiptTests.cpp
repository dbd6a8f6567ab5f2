// What happens to text that the active window does not read, with real windows.

#include "Platform/Linux/X11/PasteFixture.h"
#include "Support/RawSelectionOwner.h"
#include "VirtualKeyboard.h"

#include <QProcess>

#include <csignal>

namespace talmo::test {

using namespace std::chrono_literals;
using Outcome = PasteReceipt::Outcome;

namespace {

class PasteReceiptTest : public XcbPasteTest {
protected:
    Outcome pasteAndWait(const QString &text)
    {
        paste(text);
        const auto future = pasteboard->receipt();
        EXPECT_TRUE(waitFor(future));
        receipt = future.result();
        EXPECT_TRUE(waitFor(pasteboard->settled()));
        return receipt.outcome;
    }
    QByteArray clipboard() { return xclip(u"UTF8_STRING"_s); }
    bool clipboardBecomes(const QByteArray &text)
    {
        return waitFor([&] { return clipboard() == text; });
    }
    void freeze() { ::kill(static_cast<pid_t>(window->processId()), SIGSTOP); }
    void thaw() { ::kill(static_cast<pid_t>(window->processId()), SIGCONT); }
    bool putBack()
    {
        const auto done = pasteboard->putEarlierClipboardBack();
        EXPECT_TRUE(waitFor(done));
        return done.result();
    }

    RawSelectionOwner owner{"CLIPBOARD", {{"UTF8_STRING", {"old", "UTF8_STRING"}}}};
    PasteReceipt receipt;
};

} // namespace

TEST_F(PasteReceiptTest, reportsThatWindowReadText)
{
    openWindow();
    EXPECT_EQ(pasteAndWait(u"new"_s), Outcome::Taken);
    EXPECT_FALSE(pasteboard->holdsEarlierClipboard());
    EXPECT_EQ(clipboard(), "old");
}

TEST_F(PasteReceiptTest, terminalWithoutLatinVGetsTextFromPrimarySelection)
{
    // xterm pastes the primary selection with Shift+Insert, as VTE terminals do. Its name makes it one of them.
    const QString file = desktop.folder() + u"/typed"_s;
    QFile(file).open(QFile::WriteOnly);
    testbed::ChildProcess layout(u"setxkbmap"_s, {u"ru"_s}, desktop.environment());
    ASSERT_TRUE(waitFor([&layout] { return !layout.isRunning(); }));
    RawSelectionOwner primary{"PRIMARY", {{"UTF8_STRING", {"selected", "UTF8_STRING"}}}};
    window = std::make_unique<testbed::ChildProcess>(
        u"xterm"_s,
        QStringList{u"-name"_s, u"xfce4-terminal"_s, u"-class"_s, u"Xfce4-terminal"_s, u"-T"_s, u"Target"_s, u"-e"_s,
                    u"sh"_s, u"-c"_s, u"stty -icanon; cat > '%1'"_s.arg(file)},
        desktop.environment());
    ASSERT_TRUE(desktop.waitForActiveWindow(u"Target"_s, 20s));
    EXPECT_EQ(pasteAndWait(u"new"_s), Outcome::Taken);
    EXPECT_EQ(receipt.shortcut, u"Shift+Insert"_s);
    const auto typed = [&file] {
        QFile reader(file);
        return reader.open(QFile::ReadOnly) ? reader.readAll() : QByteArray();
    };
    EXPECT_TRUE(waitFor([&typed] { return typed() == "new"; })) << typed().constData();
    EXPECT_TRUE(waitFor([this] { return xclip(u"UTF8_STRING"_s, u"primary"_s) == "selected"; }));
    EXPECT_EQ(clipboard(), "old");
}

TEST_F(PasteReceiptTest, keepsTextOnClipboardIfWindowDoesNotReadIt)
{
    openWindow(u"0"_s, u"readonly"_s);
    EXPECT_EQ(pasteAndWait(u"new"_s), Outcome::NotTaken);
    EXPECT_EQ(receipt.shortcut, u"Ctrl+V"_s);
    EXPECT_EQ(clipboard(), "new");
    EXPECT_TRUE(pasteboard->holdsEarlierClipboard());
    EXPECT_TRUE(putBack());
    EXPECT_EQ(clipboard(), "old");
    EXPECT_FALSE(putBack());
}

TEST_F(PasteReceiptTest, hangingWindowGetsTextWhenItResumes)
{
    openWindow();
    freeze();
    EXPECT_EQ(pasteAndWait(u"new"_s), Outcome::WindowHangs);
    EXPECT_EQ(clipboard(), "new");
    thaw();
    EXPECT_TRUE(window->waitForLine(u"text: new"_s, 10s));
    EXPECT_TRUE(clipboardBecomes("old"));
}

TEST_F(PasteReceiptTest, hangingWindowNeverGetsOldTextAfterRestore)
{
    openWindow();
    freeze();
    EXPECT_EQ(pasteAndWait(u"new"_s), Outcome::WindowHangs);
    EXPECT_TRUE(putBack());
    EXPECT_EQ(clipboard(), "old");
    thaw();
    EXPECT_TRUE(window->waitForLine(u"text: new"_s, 10s));
}

TEST_F(PasteReceiptTest, hangingWindowGetsBothTextsWhenItResumes)
{
    openWindow();
    freeze();
    EXPECT_EQ(pasteAndWait(u"one "_s), Outcome::WindowHangs);
    EXPECT_EQ(pasteAndWait(u"two"_s), Outcome::WindowHangs);
    thaw();
    EXPECT_TRUE(window->waitForLine(u"text: one two"_s, 10s));
    EXPECT_TRUE(clipboardBecomes("old"));
}

TEST_F(PasteReceiptTest, reportsMissingWindowImmediatelyAndKeepsText)
{
    EXPECT_EQ(pasteAndWait(u"new"_s), Outcome::NoWindow);
    EXPECT_EQ(clipboard(), "new");
    EXPECT_TRUE(putBack());
    EXPECT_EQ(clipboard(), "old");
}

TEST_F(PasteReceiptTest, detectsGrabbedKeyboardBeforePostingKeys)
{
    openWindow();
    XConnection locker;
    const xcb_window_t shown = xcb_generate_id(locker.get());
    constexpr quint32 overrideRedirect = 1;
    xcb_create_window(locker.get(), XCB_COPY_FROM_PARENT, shown, locker.root(), 0, 0, 50, 50, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &overrideRedirect);
    xcb_map_window(locker.get(), shown);
    const XcbPtr<xcb_grab_keyboard_reply_t> grab(xcb_grab_keyboard_reply(
        locker.get(),
        xcb_grab_keyboard(locker.get(), 0, shown, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
        nullptr));
    ASSERT_TRUE(grab && grab->status == XCB_GRAB_STATUS_SUCCESS);
    EXPECT_EQ(pasteAndWait(u"new"_s), Outcome::KeyboardGrabbed);
    EXPECT_EQ(clipboard(), "new");
    xcb_ungrab_keyboard(locker.get(), XCB_CURRENT_TIME);
    locker.flush();
    EXPECT_EQ(pasteAndWait(u"next"_s), Outcome::Taken);
    EXPECT_TRUE(window->waitForLine(u"text: next"_s, 10s));
    EXPECT_EQ(clipboard(), "old") << "the user's clipboard, not the unread text";
}

TEST_F(PasteReceiptTest, detectsLayoutWithoutPasteKeys)
{
    openWindow();
    QProcess process;
    process.setProcessEnvironment(desktop.environment());
    process.start(u"xmodmap"_s, {u"-e"_s, u"keycode 55 = NoSymbol"_s, u"-e"_s, u"keycode 118 = NoSymbol"_s, u"-e"_s,
                                 u"keycode 90 = NoSymbol"_s});
    ASSERT_TRUE(waitFor([&process] { return process.state() == QProcess::NotRunning; }));
    EXPECT_EQ(pasteAndWait(u"new"_s), Outcome::NoPasteKey);
    EXPECT_EQ(clipboard(), "new");
}

TEST_F(PasteReceiptTest, nextPasteWorksAndRestoresOriginalClipboard)
{
    openWindow(u"0"_s, u"readonly"_s);
    EXPECT_EQ(pasteAndWait(u"lost"_s), Outcome::NotTaken);
    window.reset();
    openWindow(u"0"_s, {}, u"Other"_s);
    EXPECT_EQ(pasteAndWait(u"found"_s), Outcome::Taken);
    EXPECT_TRUE(window->waitForLine(u"text: found"_s, 10s));
    EXPECT_EQ(clipboard(), "old");
}

TEST_F(PasteReceiptTest, keepsWhatUserCopiesMeanwhile)
{
    EXPECT_EQ(pasteAndWait(u"new"_s), Outcome::NoWindow);
    const RawSelectionOwner copied("CLIPBOARD", {{"UTF8_STRING", {"copied", "UTF8_STRING"}}});
    EXPECT_TRUE(clipboardBecomes("copied"));
    EXPECT_FALSE(putBack());
    EXPECT_EQ(clipboard(), "copied");
}

TEST_F(PasteReceiptTest, usersOwnPasteRestoresClipboard)
{
    EXPECT_EQ(pasteAndWait(u"new"_s), Outcome::NoWindow);
    openWindow();
    testbed::VirtualKeyboard keyboard;
    keyboard.press(testbed::VirtualKeyboard::controlRight);
    keyboard.tap('v');
    keyboard.release(testbed::VirtualKeyboard::controlRight);
    EXPECT_TRUE(window->waitForLine(u"text: new"_s, 10s));
    EXPECT_TRUE(clipboardBecomes("old"));
}

namespace {

/// A clipboard as set by a password manager.
class SecretTest : public XcbPasteTest {
protected:
    SecretTest()
        : XcbPasteTest(3s)
    {
    }
    std::unique_ptr<RawSelectionOwner> manager = std::make_unique<RawSelectionOwner>(
        "CLIPBOARD", std::vector<std::pair<QByteArray, RawSelectionOwner::Value>>{
                         {"UTF8_STRING", {"password", "UTF8_STRING"}},
                         {"x-kde-passwordManagerHint", {"secret", "x-kde-passwordManagerHint"}}});
    bool isClipboardEmpty() { return xclip(u"UTF8_STRING"_s).isEmpty(); }
};

} // namespace

TEST_F(SecretTest, isRestoredWithHintThenCleared)
{
    openWindow();
    paste(u"new"_s);
    EXPECT_TRUE(window->waitForLine(u"text: new"_s, 10s));
    ASSERT_TRUE(waitFor(pasteboard->settled()));
    EXPECT_EQ(xclip(u"UTF8_STRING"_s), "password");
    EXPECT_EQ(xclip(u"x-kde-passwordManagerHint"_s), "secret");
    EXPECT_TRUE(waitFor([this] { return isClipboardEmpty(); }));
}

TEST_F(SecretTest, isNotRestoredAfterOwnerExits)
{
    openWindow(u"300"_s);
    paste(u"new"_s);
    manager.reset();
    EXPECT_TRUE(window->waitForLine(u"text: new"_s, 10s));
    ASSERT_TRUE(waitFor(pasteboard->settled()));
    EXPECT_TRUE(isClipboardEmpty());
}

} // namespace talmo::test
