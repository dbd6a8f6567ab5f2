#include "Faults/FaultFixture.h"
#include "Support/Notified.h"
#include "Support/RawSelectionOwner.h"

#include <csignal>

namespace talmo::test {

namespace {

RawSelectionOwner::Value plain(const char *data)
{
    return {data, "UTF8_STRING"};
}

const QString notInTime = u"Part of the clipboard was lost: its application did not provide it in time. Copy it again "
                          u"if you need it."_s;
const QString tooLarge =
    u"Part of the clipboard was lost: it held more than Talmo can keep. Copy it again if you need it."_s;

} // namespace

FAULT(Clipboard, ownerHangs, "The program that owns the clipboard hangs",
      "The text arrives half a second later; a notification says that part of the clipboard is gone")
{
    Notified user(environment);
    const QString image = desktop.folder() + u"/image"_s;
    testbed::ChildProcess owner(QStringLiteral(TALMO_BIN "/talmo-clipboard-owner"), {image}, environment);
    ASSERT_TRUE(owner.waitForLine(u"owned"_s, timeout));
    openQtWindow();
    startTalmo();
    ::kill(static_cast<pid_t>(owner.processId()), SIGSTOP);
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(nextMeant()));
    ::kill(static_cast<pid_t>(owner.processId()), SIGCONT);
    EXPECT_TRUE(user.isToldOnly(notInTime));
    nextDictationWorks();
}

FAULT(Clipboard, ownerEndsInMidValue, "The program that owns the clipboard ends while it hands over a large value",
      "The text arrives; the rest of the clipboard comes back; a notification names the loss")
{
    Notified user(environment);
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
    EXPECT_TRUE(user.isToldOnly(notInTime));
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
    Notified user(environment);
    openQtWindow();
    startTalmo();
    const RawSelectionOwner owner("CLIPBOARD", {{"UTF8_STRING", plain("kept")}}, 600'000);
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(nextMeant()));
    EXPECT_TRUE(talmo->waitForLine(u"the clipboard's further types was not kept"_s, timeout));
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "kept"; }, timeout));
    EXPECT_TRUE(user.isToldOnly(tooLarge));
    nextDictationWorks();
}

FAULT(Clipboard, ownerSendsWithoutEnd, "A program offers more than 256 MB",
      "The text arrives within three seconds; what fits comes back; a notification says that the rest is gone")
{
    Notified user(environment);
    openQtWindow();
    startTalmo();
    RawSelectionOwner::Value endless{QByteArray(qsizetype(4) << 20, 'x'), "image/png"};
    endless.pieces = 1'000'000;
    const RawSelectionOwner owner("CLIPBOARD", {{"UTF8_STRING", plain("kept")}, {"image/png", endless}});
    dictate(u"hello world"_s);
    EXPECT_TRUE(windowShows(nextMeant()));
    EXPECT_TRUE(talmo->waitForLine(u"the clipboard's image/png was not kept"_s, timeout));
    EXPECT_TRUE(testbed::pollUntil([this] { return clipboard() == "kept"; }, timeout));
    EXPECT_TRUE(user.isToldOnly(tooLarge));
    nextDictationWorks();
}

FAULT(Clipboard, takenBeforeItIsRead, "Another program keeps taking the clipboard before the window has read the text",
      "“Another program replaced the clipboard. Choose “Copy Last Dictation” from the icon's menu.”")
{
    openQtWindow();
    startTalmo();
    copy(u"clipboard before"_s);
    holdAndSpeak();
    signalWindow(SIGSTOP);
    keyboard.release(key);
    ASSERT_TRUE(talmoSays(u"state: inserting"_s));
    std::vector<std::unique_ptr<RawSelectionOwner>> thieves;
    const auto isRefused = [this, &thieves] {
        thieves.push_back(std::make_unique<RawSelectionOwner>(
            "CLIPBOARD",
            std::vector<std::pair<QByteArray, RawSelectionOwner::Value>>{{"UTF8_STRING", plain("theirs")}}));
        return talmo->output().contains(u"error: Another program replaced the clipboard."_s);
    };
    EXPECT_TRUE(testbed::pollUntil(isRefused, timeout));
    EXPECT_EQ(clipboard(), "theirs");
    testbed::ChildProcess last(QStringLiteral(TALMO_BIN "/talmoctl"), {u"last"_s}, environment);
    EXPECT_TRUE(last.waitForLine(nextMeant(), timeout));
    signalWindow(SIGCONT);
    nextDictationWorks();
}

FAULT(Clipboard, secretsOwnerEnds, "A password manager ends while its password is replaced by a text",
      "The text arrives; the password does not come back")
{
    auto owner = std::make_unique<RawSelectionOwner>(
        "CLIPBOARD", std::vector<std::pair<QByteArray, RawSelectionOwner::Value>>{
                         {"UTF8_STRING", plain("the password")},
                         {"x-kde-passwordManagerHint", {"secret", "x-kde-passwordManagerHint"}}});
    openQtWindow(u"500"_s);
    startTalmo();
    dictate(u"hello world"_s);
    ASSERT_TRUE(talmoSays(u"state: inserting"_s));
    owner.reset();
    EXPECT_TRUE(windowShows(nextMeant()));
    ASSERT_TRUE(talmoSays(u"state: idle"_s));
    EXPECT_NE(clipboard(), "the password");
    nextDictationWorks();
}

} // namespace talmo::test
