// Pasting while one of Talmo's own windows has the keyboard: the clipboard is served from a thread of its own, so the
// main thread, which waits for it inside Qt, cannot be waiting for itself.

#include "Insertion/ClipboardPasteInsertionService.h"
#include "Platform/Linux/X11/Clipboard/XcbPasteboard.h"
#include "Platform/Linux/X11/Keys/XTestKeyEventPoster.h"
#include "VirtualDesktop.h"

#include <QApplication>
#include <QPlainTextEdit>

#include <gtest/gtest.h>

#include <memory>

namespace {

std::unique_ptr<talmo::testbed::VirtualDesktop> desktop;

} // namespace

TEST(OwnWindow, pastesIntoOwnWindow)
{
    using namespace std::chrono_literals;
    const auto session = talmo::XSession::open();
    talmo::XcbPasteboard pasteboard(session);
    talmo::XTestKeyEventPoster poster(session, pasteboard.transaction());
    QPlainTextEdit editor;
    editor.show();
    editor.activateWindow();
    ASSERT_TRUE(talmo::testbed::waitUntil([&editor] { return editor.hasFocus() && editor.isActiveWindow(); }, 20s));
    const auto before = std::chrono::steady_clock::now();
    pasteboard.setString(QStringLiteral("into our own"));
    poster.post({talmo::ClipboardPasteInsertionService::pasteKeyCode, true,
                 talmo::ClipboardPasteInsertionService::commandFlag});
    EXPECT_TRUE(talmo::testbed::waitUntil([&editor] { return !editor.toPlainText().isEmpty(); }, 20s));
    EXPECT_EQ(editor.toPlainText(), QStringLiteral("into our own"));
    EXPECT_LT(std::chrono::steady_clock::now() - before, 4s); // Qt itself gives up after five.
}

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    {
        QCoreApplication starter(argc, argv); // Child processes need one; the real one needs the display first.
        desktop = std::make_unique<talmo::testbed::VirtualDesktop>();
    }
    int result = 0;
    {
        qputenv("QT_QPA_PLATFORM", "xcb");
        QApplication application(argc, argv);
        result = RUN_ALL_TESTS();
    }
    desktop.reset();
    return result;
}
