#pragma once

#include "ChildProcess.h"
#include "Insertion/ClipboardPasteInsertionService.h"
#include "Platform/Linux/X11/Clipboard/XcbPasteboard.h"
#include "Platform/Linux/X11/Keys/XTestKeyEventPoster.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "VirtualDesktop.h"

#include <QFile>

#include <gtest/gtest.h>

#include <memory>

namespace talmo::test {

class XcbPasteboardTest : public testing::Test {
protected:
    explicit XcbPasteboardTest(std::chrono::milliseconds secretTime = SecretLifetime::longestTime)
        : pasteboard(std::make_shared<XcbPasteboard>(session, secretTime))
    {
    }
    QList<PasteboardRepresentation> read()
    {
        const auto future = pasteboard->items();
        EXPECT_TRUE(waitFor(future));
        const auto items = future.result();
        return items.isEmpty() ? QList<PasteboardRepresentation>() : items.front().representations;
    }
    static QByteArray dataOf(const QList<PasteboardRepresentation> &all, const QString &type)
    {
        for (const auto &each : all) {
            if (each.type == type) {
                return each.data;
            }
        }
        return "(none)";
    }
    /// The clipboard as another program reads it.
    QByteArray xclip(const QString &target, const QString &selection = u"clipboard"_s)
    {
        QProcess process;
        process.setProcessEnvironment(desktop.environment());
        process.start(u"xclip"_s, {u"-selection"_s, selection, u"-o"_s, u"-t"_s, target});
        EXPECT_TRUE(waitFor([&process] { return process.state() == QProcess::NotRunning; }));
        return process.readAllStandardOutput();
    }
    std::unique_ptr<testbed::ChildProcess> otherOwner()
    {
        auto owner = std::make_unique<testbed::ChildProcess>(QStringLiteral(TALMO_BIN "/talmo-clipboard-owner"),
                                                             QStringList{imageFile()}, desktop.environment());
        EXPECT_TRUE(owner->waitForLine(u"owned"_s, std::chrono::seconds(20)));
        return owner;
    }
    QString imageFile() const { return desktop.folder() + u"/image"_s; }
    QByteArray image() const
    {
        QFile file(imageFile());
        EXPECT_TRUE(file.open(QFile::ReadOnly));
        return file.readAll();
    }

    testbed::VirtualDesktop desktop;
    std::shared_ptr<XSession> session = XSession::open();
    std::shared_ptr<XcbPasteboard> pasteboard;
};

/// Pastes into the focused window as the insertion service does, but without its waits.
class XcbPasteTest : public XcbPasteboardTest {
protected:
    using XcbPasteboardTest::XcbPasteboardTest;

    /// `kind`: "readonly" for a window that ignores pastes.
    void openWindow(const QString &delay = u"0"_s, const QString &kind = {}, const QString &title = u"Target"_s)
    {
        window = std::make_unique<testbed::ChildProcess>(QStringLiteral(TALMO_BIN "/talmo-demo-window"),
                                                         QStringList{title, delay, kind}, desktop.environment());
        ASSERT_TRUE(desktop.waitForActiveWindow(title, std::chrono::seconds(20)));
    }
    void paste(const QString &text) { paste(text, poster); }
    void paste(const QString &text, KeyEventPoster &by)
    {
        pasteboard->beginPaste();
        const auto snapshot = pasteboard->items();
        ASSERT_TRUE(waitFor(snapshot));
        pasteboard->clearContents();
        pasteboard->setString(text);
        by.post({ClipboardPasteInsertionService::pasteKeyCode, true, ClipboardPasteInsertionService::commandFlag});
        by.post({ClipboardPasteInsertionService::pasteKeyCode, false, ClipboardPasteInsertionService::commandFlag});
        pasteboard->clearContents();
        if (!snapshot.result().isEmpty()) {
            pasteboard->writeItems(snapshot.result());
        }
        pasteboard->endPaste();
        // Everything queued on the session's thread has run; only the restore may still be pending.
        ASSERT_TRUE(waitFor(session->executor().call([] {})));
    }
    XTestKeyEventPoster poster{session, pasteboard->transaction()};
    std::unique_ptr<testbed::ChildProcess> window;
};

} // namespace talmo::test
