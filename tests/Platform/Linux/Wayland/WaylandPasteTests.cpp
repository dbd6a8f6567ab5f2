// Pasting into the windows of a real compositor.

#include "Insertion/ClipboardPasteInsertionService.h"
#include "Platform/Linux/Wayland/Clipboard/WaylandPasteboard.h"
#include "Platform/Linux/Wayland/Keys/WaylandKeyEventPoster.h"
#include "Platform/Linux/X11/Clipboard/XcbPasteboard.h"
#include "Platform/Linux/X11/Keys/XTestKeyEventPoster.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "WaylandDesktop.h"

#include <QFile>

#include <gtest/gtest.h>

#include <csignal>

namespace talmo::test {

using namespace std::chrono_literals;
using Outcome = PasteReceipt::Outcome;

namespace {

class WaylandPasteTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (!testbed::WaylandDesktop::isInstalled()) {
            GTEST_SKIP() << "sway is not installed";
        }
        desktop.emplace();
        session = WaylandSession::open();
        ASSERT_NE(session, nullptr);
        pasteboard = std::make_shared<WaylandPasteboard>(session);
        poster = std::make_unique<WaylandKeyEventPoster>(session, pasteboard->transaction());
    }
    /// `variable`: one of the environment, with its value.
    void openWindow(const QString &program, const QStringList &arguments,
                    const std::pair<QString, QString> &variable = {})
    {
        auto environment = desktop->environment();
        if (!variable.first.isEmpty()) {
            environment.insert(variable.first, variable.second);
        }
        window = std::make_unique<testbed::ChildProcess>(program, arguments, environment);
        ASSERT_TRUE(desktop->waitForActiveWindow(u"Target"_s, 20s)) << window->output().toStdString();
    }
    void openGtkWindow() { openWindow(QStringLiteral(TALMO_BIN "/talmo-gtk-window"), {}); }
    void begin(const QString &text)
    {
        pasteboard->beginPaste();
        const auto snapshot = pasteboard->items();
        ASSERT_TRUE(waitFor(snapshot));
        saved = snapshot.result();
        pasteboard->clearContents();
        pasteboard->setString(text);
    }
    void postShortcut()
    {
        for (const bool isDown : {true, false}) {
            poster->post(
                {ClipboardPasteInsertionService::pasteKeyCode, isDown, ClipboardPasteInsertionService::commandFlag});
        }
    }
    void end()
    {
        pasteboard->clearContents();
        if (!saved.isEmpty()) {
            pasteboard->writeItems(saved);
        }
        pasteboard->endPaste();
    }
    Outcome outcome()
    {
        const auto future = pasteboard->receipt();
        EXPECT_TRUE(waitFor(future));
        receipt = future.result();
        EXPECT_TRUE(waitFor(pasteboard->settled()));
        return receipt.outcome;
    }
    Outcome paste(const QString &text)
    {
        begin(text);
        postShortcut();
        end();
        return outcome();
    }
    bool windowShows(const QString &text) { return window->waitForLine(u"text: "_s + text, 10s).has_value(); }
    void signalWindow(int signal) { ::kill(static_cast<pid_t>(window->processId()), signal); }

    std::optional<testbed::WaylandDesktop> desktop;
    std::shared_ptr<WaylandSession> session;
    std::shared_ptr<WaylandPasteboard> pasteboard;
    std::unique_ptr<WaylandKeyEventPoster> poster;
    std::unique_ptr<testbed::ChildProcess> window;
    QList<PasteboardItem> saved;
    PasteReceipt receipt;
};

} // namespace

TEST_F(WaylandPasteTest, windowGetsTextAndClipboardIsRestored)
{
    desktop->copy("old");
    openGtkWindow();
    EXPECT_EQ(paste(u"new"_s), Outcome::Taken);
    EXPECT_EQ(receipt.shortcut, u"Ctrl+V"_s);
    EXPECT_TRUE(windowShows(u"new"_s));
    EXPECT_EQ(desktop->paste(), "old");
}

TEST_F(WaylandPasteTest, restoresEveryTypeByteForByte)
{
    QByteArray large(2500000, '\0');
    for (qsizetype index = 0; index < large.size(); ++index) {
        large[index] = static_cast<char>(index * 7);
    }
    desktop->copy(large, u"image/png"_s);
    const auto types = desktop->offeredTypes();
    openGtkWindow();
    EXPECT_EQ(paste(u"new"_s), Outcome::Taken);
    EXPECT_EQ(desktop->offeredTypes(), types);
    EXPECT_EQ(desktop->paste(u"image/png"_s), large);
}

TEST_F(WaylandPasteTest, emptyClipboardIsEmptyAgain)
{
    openGtkWindow();
    EXPECT_EQ(paste(u"new"_s), Outcome::Taken);
    EXPECT_TRUE(desktop->offeredTypes().isEmpty());
}

TEST_F(WaylandPasteTest, terminalGetsItsOwnShortcut)
{
    const QString file = desktop->folder() + u"/typed"_s;
    openWindow(u"foot"_s, {u"--title"_s, u"Target"_s, u"sh"_s, u"-c"_s, u"stty -icanon; cat > '%1'"_s.arg(file)});
    ASSERT_TRUE(waitFor([&file] { return QFile::exists(file); }));
    EXPECT_EQ(paste(u"new"_s), Outcome::Taken);
    EXPECT_EQ(receipt.shortcut, u"Ctrl+Shift+V"_s);
    const auto typed = [&file] {
        QFile reader(file);
        return reader.open(QFile::ReadOnly) ? reader.readAll() : QByteArray();
    };
    EXPECT_TRUE(waitFor([&typed] { return typed().contains("new"); })) << typed().constData();
}

TEST_F(WaylandPasteTest, unknownApplicationGetsTextFromEitherSelection)
{
    desktop->copy("old");
    desktop->copy("selected", u"text/plain;charset=utf-8"_s, u"primary"_s);
    openWindow(u"foot"_s, {u"--title"_s, u"Target"_s, u"--app-id"_s, u""_s, u"cat"_s});
    EXPECT_EQ(paste(u"new"_s), Outcome::Taken);
    EXPECT_EQ(receipt.shortcut, u"Shift+Insert"_s);
    EXPECT_EQ(desktop->paste(), "old");
    EXPECT_EQ(desktop->paste(u"text/plain;charset=utf-8"_s, u"primary"_s), "selected");
}

TEST_F(WaylandPasteTest, xProgramGetsText)
{
    desktop->copy("old");
    openWindow(QStringLiteral(TALMO_BIN "/talmo-gtk-window"), {}, {u"GDK_BACKEND"_s, u"x11"_s});
    EXPECT_EQ(paste(u"new"_s), Outcome::Taken);
    EXPECT_TRUE(windowShows(u"new"_s));
    EXPECT_EQ(desktop->paste(), "old");
}

TEST_F(WaylandPasteTest, qtProgramGetsText)
{
    desktop->copy("old");
    openWindow(QStringLiteral(TALMO_BIN "/talmo-qt-entry-window"), {}, {u"QT_QPA_PLATFORM"_s, u"wayland"_s});
    EXPECT_EQ(paste(u"new"_s), Outcome::Taken);
    EXPECT_TRUE(windowShows(u"new"_s));
    EXPECT_EQ(desktop->paste(), "old");
}

TEST_F(WaylandPasteTest, gtk4ProgramGetsText)
{
    desktop->copy("old");
    openWindow(u"/usr/bin/python3"_s, {QStringLiteral(TALMO_TESTS_FOLDER "/EndToEnd/gtk4_window.py")});
    EXPECT_EQ(paste(u"new"_s), Outcome::Taken);
    EXPECT_TRUE(windowShows(u"new"_s));
    EXPECT_EQ(desktop->paste(), "old");
}

TEST_F(WaylandPasteTest, nestedXServerTypesNothingIntoWaylandWindow)
{
    openGtkWindow();
    const auto nested = XSession::open(true);
    const auto xPasteboard = std::make_shared<XcbPasteboard>(nested);
    XTestKeyEventPoster xPoster(nested, xPasteboard->transaction());
    xPasteboard->beginPaste();
    ASSERT_TRUE(waitFor(xPasteboard->items()));
    xPasteboard->setString(u"new"_s);
    xPoster.post({ClipboardPasteInsertionService::pasteKeyCode, true, ClipboardPasteInsertionService::commandFlag});
    xPasteboard->clearContents();
    xPasteboard->endPaste();
    const auto future = xPasteboard->receipt();
    ASSERT_TRUE(waitFor(future));
    EXPECT_EQ(future.result().outcome, Outcome::CannotType);
}

TEST_F(WaylandPasteTest, readBeforeShortcutDoesNotCount)
{
    desktop->copy("old");
    openGtkWindow();
    signalWindow(SIGSTOP);
    begin(u"new"_s);
    EXPECT_EQ(desktop->paste(), "new"); // As a clipboard manager does.
    postShortcut();
    end();
    EXPECT_EQ(outcome(), Outcome::NotTaken);
    EXPECT_EQ(desktop->activeWindowTitle(), u"Target"_s);
    signalWindow(SIGCONT);
    EXPECT_TRUE(windowShows(u"new"_s)) << "not the old text";
}

TEST_F(WaylandPasteTest, windowThatFreezesForAWhileGetsText)
{
    desktop->copy("old");
    openGtkWindow();
    signalWindow(SIGSTOP);
    begin(u"new"_s);
    postShortcut();
    end();
    testbed::sleepFor(400ms);
    signalWindow(SIGCONT);
    EXPECT_EQ(outcome(), Outcome::Taken);
    EXPECT_TRUE(windowShows(u"new"_s));
    EXPECT_EQ(desktop->paste(), "old");
}

TEST_F(WaylandPasteTest, compositorThatHangsInsertsTextWhenItRecovers)
{
    desktop->copy("old");
    openGtkWindow();
    begin(u"new"_s);
    desktop->freezeCompositor();
    postShortcut();
    end();
    EXPECT_EQ(outcome(), Outcome::NotTaken);
    desktop->thawCompositor();
    EXPECT_TRUE(windowShows(u"new"_s));
    EXPECT_TRUE(testbed::pollUntil([this] { return desktop->paste() == "old"; }, 10s));
}

TEST_F(WaylandPasteTest, unreadTextStaysUntilClipboardIsPutBack)
{
    desktop->copy("old");
    EXPECT_EQ(paste(u"new"_s), Outcome::NoWindow);
    EXPECT_EQ(desktop->paste(), "new");
    EXPECT_TRUE(pasteboard->holdsEarlierClipboard());
    const auto done = pasteboard->putEarlierClipboardBack();
    ASSERT_TRUE(waitFor(done));
    EXPECT_TRUE(done.result());
    EXPECT_EQ(desktop->paste(), "old");
}

TEST_F(WaylandPasteTest, keepsWhatUserCopiesMeanwhile)
{
    desktop->copy("old");
    openGtkWindow();
    signalWindow(SIGSTOP);
    begin(u"new"_s);
    postShortcut();
    end();
    desktop->copy("copied meanwhile");
    EXPECT_EQ(outcome(), Outcome::ClipboardLost);
    EXPECT_EQ(desktop->paste(), "copied meanwhile");
}

TEST_F(WaylandPasteTest, secretIsRemovedAgain)
{
    pasteboard = std::make_shared<WaylandPasteboard>(session, 200ms);
    poster = std::make_unique<WaylandKeyEventPoster>(session, pasteboard->transaction());
    desktop->copy("secret", u"x-kde-passwordManagerHint"_s);
    openGtkWindow();
    EXPECT_EQ(paste(u"new"_s), Outcome::Taken);
    EXPECT_TRUE(testbed::pollUntil([this] { return desktop->offeredTypes().isEmpty(); }, 10s));
}

TEST_F(WaylandPasteTest, textCopiedOverRestoredSecretStays)
{
    pasteboard = std::make_shared<WaylandPasteboard>(session, 200ms);
    poster = std::make_unique<WaylandKeyEventPoster>(session, pasteboard->transaction());
    desktop->copy("secret", u"x-kde-passwordManagerHint"_s);
    openGtkWindow();
    EXPECT_EQ(paste(u"new"_s), Outcome::Taken);
    ASSERT_TRUE(waitFor(pasteboard->settled()));
    pasteboard->clearContents();
    pasteboard->setString(u"the last dictation"_s);
    EXPECT_FALSE(testbed::pollUntil([this] { return desktop->offeredTypes().isEmpty(); }, 1s));
}

} // namespace talmo::test
