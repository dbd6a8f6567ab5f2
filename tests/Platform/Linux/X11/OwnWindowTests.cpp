// Pasting while one of Talmo's own windows has the focus. The clipboard is served from a separate thread, so the main
// thread, which blocks inside Qt until it gets the data, does not wait for itself.

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
    EXPECT_LT(std::chrono::steady_clock::now() - before, 4s); // Qt's own timeout is five seconds.
}

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    {
        QCoreApplication starter(argc, argv); // QProcess needs an application, and QApplication needs the display.
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
