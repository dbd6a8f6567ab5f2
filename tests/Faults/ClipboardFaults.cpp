#include "Faults/FaultFixture.h"
#include "Support/RawSelectionOwner.h"

#include <csignal>

namespace talmo::test {

namespace {

RawSelectionOwner::Value plain(const char *data)
{
    return {data, "UTF8_STRING"};
}

} // namespace

FAULT(Clipboard, ownerHangs, "The program that owns the clipboard hangs",
      "The text arrives half a second later; a notification says that part of the clipboard is gone")
{
    const QString image = desktop.folder() + u"/image"_s;
    testbed::ChildProcess owner(QStringLiteral(TALMO_BIN "/talmo-clipboard-owner"), {image}, environment);
    ASSERT_TRUE(owner.waitForLine(u"owned"_s, timeout));
    openQtWindow();
    startTalmo();
    ::kill(static_cast<pid_t>(owner.processId()), SIGSTOP);
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(nextMeant()));
    ::kill(static_cast<pid_t>(owner.processId()), SIGCONT);
    nextDictationWorks();
}

FAULT(Clipboard, ownerEndsInMidValue, "The program that owns the clipboard ends while it hands over a large value",
      "The text arrives; the rest of the clipboard comes back; a notification names the loss")
{
    openQtWindow();
    startTalmo();
    RawSelectionOwner::Value dying{QByteArray(100'000, 'x'), "image/png"};
    dying.pieces = 2;
    dying.endsThen = true;
    const RawSelectionOwner owner("CLIPBOARD", {{"UTF8_STRING", plain("kept")}, {"image/png", dying}});
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(nextMeant()));
    EXPECT_TRUE(talmo->waitForLine(
        u"the clipboard's image/png was not kept (200000 bytes received): its owner exited"_s, timeout));
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "kept"; }, timeout));
    nextDictationWorks();
}

FAULT(Clipboard, ownerAnnouncesAndSendsNothing,
      "The program that owns the clipboard announces a value and sends nothing",
      "The text arrives half a second later; the rest of the clipboard comes back")
{
    openQtWindow();
    startTalmo();
    RawSelectionOwner::Value lying{QByteArray(100'000, 'x'), "image/png"};
    lying.pieces = 1;
    const RawSelectionOwner owner("CLIPBOARD", {{"UTF8_STRING", plain("kept")}, {"image/png", lying}});
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(nextMeant()));
    EXPECT_TRUE(talmo->waitForLine(u"its owner took too long"_s, timeout));
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "kept"; }, timeout));
    nextDictationWorks();
}

FAULT(Clipboard, ownerOffersSixHundredThousandTypes, "A program offers 600,000 clipboard types",
      "The text arrives; the first 256 types come back; a notification says that the rest is gone")
{
    openQtWindow();
    startTalmo();
    const RawSelectionOwner owner("CLIPBOARD", {{"UTF8_STRING", plain("kept")}}, 600'000);
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(nextMeant()));
    EXPECT_TRUE(talmo->waitForLine(u"the clipboard's further types was not kept"_s, timeout));
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "kept"; }, timeout));
    nextDictationWorks();
}

FAULT(Clipboard, ownerSendsWithoutEnd, "A program offers more than 256 MB",
      "The text arrives within three seconds; what fits comes back; a notification says that the rest is gone")
{
    openQtWindow();
    startTalmo();
    RawSelectionOwner::Value endless{QByteArray(qsizetype(4) << 20, 'x'), "image/png"};
    endless.pieces = 1'000'000;
    const RawSelectionOwner owner("CLIPBOARD", {{"UTF8_STRING", plain("kept")}, {"image/png", endless}});
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(nextMeant()));
    EXPECT_TRUE(talmo->waitForLine(u"the clipboard's image/png was not kept"_s, timeout));
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "kept"; }, timeout));
    nextDictationWorks();
}

} // namespace talmo::test
