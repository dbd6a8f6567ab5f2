#include "EndToEnd/TalmoFixture.h"

#include "Support/Printing.h"

#include <QFile>

namespace talmo::test {

using ClipboardEndToEndTest = TalmoFixture;

TEST_F(ClipboardEndToEndTest, restoresTextHtmlAndLargeImageByteForByte)
{
    const QString image = desktop.folder() + u"/image"_s;
    testbed::ChildProcess owner(QStringLiteral(TALMO_BIN "/talmo-clipboard-owner"), {image}, environment);
    ASSERT_TRUE(owner.waitForLine(u"owned"_s, timeout));
    const auto targetsBefore = clipboard(u"TARGETS"_s);
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == u"plain – text"_s.toUtf8(); }, timeout));
    EXPECT_EQ(clipboard(u"text/html"_s), "<b>rich</b> text");
    QFile file(image);
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    const QByteArray expected = file.readAll();
    EXPECT_EQ(expected.size(), 2 << 20);
    EXPECT_EQ(clipboard(u"image/x-talmo-test"_s), expected);
    for (const auto &target : targetsBefore.split('\n')) {
        EXPECT_TRUE(clipboard(u"TARGETS"_s).split('\n').contains(target)) << target.constData();
    }
}

TEST_F(ClipboardEndToEndTest, emptyClipboardStaysEmpty)
{
    openQtWindow();
    startTalmo();
    ASSERT_TRUE(isClipboardEmpty());
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    EXPECT_TRUE(testbed::pollUntil([this] { return isClipboardEmpty(); }, timeout));
}

TEST_F(ClipboardEndToEndTest, program300msSlowGetsNewText)
{
    openQtWindow(u"300"_s);
    startTalmo();
    copy(u"clipboard before"_s);
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "clipboard before\n"; }, timeout));
}

TEST_F(ClipboardEndToEndTest, quittingAfterPasteRestoresClipboardFirst)
{
    openQtWindow(u"300"_s);
    startTalmo();
    dictate(u"hello world"_s);
    ASSERT_TRUE(talmoSays(u"state: idle"_s));
    EXPECT_EQ(quitTalmo(), 0);
    EXPECT_TRUE(windowShows(u"Hello world."_s));
    EXPECT_TRUE(isClipboardEmpty());
}

} // namespace talmo::test
