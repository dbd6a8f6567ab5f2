#include "Insertion/ClipboardPasteInsertionService.h"

#include "Support/FakeEventMonitor.h"
#include "Support/FakePasteboard.h"
#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

namespace talmo::test {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class ClipboardPasteInsertionServiceTest : public testing::Test {
protected:
    /// Lets a paste still waiting end while what it uses exists.
    void TearDown() override { clock->advance(1min); }
    void insert(const QString &text, std::stop_token stop = {})
    {
        task.emplace(run(service, text, stop, &outcome));
        settle();
    }

    std::shared_ptr<FakePasteboard> pasteboard = std::make_shared<FakePasteboard>();
    std::shared_ptr<FakeKeyEventPoster> poster = std::make_shared<FakeKeyEventPoster>(pasteboard->calls);
    std::shared_ptr<FakeInputTrust> trust = std::make_shared<FakeInputTrust>();
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    ClipboardPasteInsertionService service{pasteboard, poster, trust, clock};
    /// Empty while running, then "done" or the error's description.
    QString outcome;
    const PasteboardItem item{
        {{u"UTF8_STRING"_s, "old", u"UTF8_STRING"_s, 8}, {u"image/png"_s, "\x89PNG\0x", u"image/png"_s, 8}}};

private:
    static QCoro::Task<void> run(ClipboardPasteInsertionService &service, QString text, std::stop_token stop,
                                 QString *outcome)
    {
        try {
            co_await service.insert(text, stop);
            *outcome = u"done"_s;
        } catch (const Error &error) {
            *outcome = error.localizedDescription();
        }
    }
    std::optional<QCoro::Task<void>> task;
};

} // namespace

TEST_F(ClipboardPasteInsertionServiceTest, hasExpectedConstants)
{
    EXPECT_EQ(ClipboardPasteInsertionService::pasteKeyCode, 9);
    EXPECT_EQ(ClipboardPasteInsertionService::commandFlag, 0x100000U);
    EXPECT_EQ(ClipboardPasteInsertionService::pasteboardChangeTime, 15ms);
    EXPECT_EQ(ClipboardPasteInsertionService::pasteTime, 65ms);
}

TEST_F(ClipboardPasteInsertionServiceTest, runsStepsInOrder)
{
    pasteboard->content = {item};
    insert(u"hello"_s);
    EXPECT_THAT(pasteboard->calls, ElementsAre("beginPaste", "items", "clear", "setString hello"));
    clock->advance(15ms - 1ns);
    EXPECT_THAT(poster->posted, IsEmpty());
    clock->advance(1ns);
    EXPECT_THAT(poster->posted, ElementsAre(KeyEvent{9, true, 0x100000}, KeyEvent{9, false, 0x100000}));
    clock->advance(65ms - 1ns);
    EXPECT_EQ(outcome, QString());
    clock->advance(1ns);
    EXPECT_EQ(outcome, u"done"_s);
    EXPECT_THAT(pasteboard->calls, ElementsAre("beginPaste", "items", "clear", "setString hello", "key down", "key up",
                                               "clear", "writeItems 1", "endPaste"));
    EXPECT_EQ(pasteboard->content, QList<PasteboardItem>{item});
}

TEST_F(ClipboardPasteInsertionServiceTest, emptyPasteboardIsRestoredToEmpty)
{
    insert(u"hello"_s);
    clock->advance(1s);
    EXPECT_TRUE(pasteboard->content.isEmpty());
    EXPECT_THAT(pasteboard->calls, testing::Not(testing::Contains(testing::StartsWith("writeItems"))));
}

TEST_F(ClipboardPasteInsertionServiceTest, emptyTextThrowsEvenWithoutAccess)
{
    trust->trusted = false;
    insert(QString());
    EXPECT_EQ(outcome, u"Nothing to insert."_s);
    EXPECT_THAT(pasteboard->calls, IsEmpty());
}

TEST_F(ClipboardPasteInsertionServiceTest, insertsTextOfSpacesUnchanged)
{
    insert(u"  "_s);
    EXPECT_EQ(pasteboard->calls.back(), "setString   ");
}

TEST_F(ClipboardPasteInsertionServiceTest, pasteboardIsUnchangedWithoutAccess)
{
    trust->trusted = false;
    pasteboard->content = {item};
    insert(u"hello"_s);
    EXPECT_EQ(outcome, u"Talmo needs Accessibility access (System Settings > Privacy & Security > Accessibility) to "
                       u"insert text into other apps."_s);
    EXPECT_THAT(pasteboard->calls, IsEmpty());
    EXPECT_EQ(trust->requests, 0);
}

TEST_F(ClipboardPasteInsertionServiceTest, cancellingFirstWaitPostsNothingAndKeepsText)
{
    std::stop_source stop;
    pasteboard->content = {item};
    insert(u"hello"_s, stop.get_token());
    clock->advance(10ms);
    stop.request_stop();
    settle();
    EXPECT_EQ(outcome, Cancelled().localizedDescription());
    EXPECT_THAT(pasteboard->calls, ElementsAre("beginPaste", "items", "clear", "setString hello", "endPaste"));
}

TEST_F(ClipboardPasteInsertionServiceTest, cancellingSecondWaitDoesNotRestore)
{
    std::stop_source stop;
    insert(u"hello"_s, stop.get_token());
    clock->advance(15ms);
    stop.request_stop();
    settle();
    EXPECT_EQ(outcome, Cancelled().localizedDescription());
    EXPECT_THAT(pasteboard->calls,
                ElementsAre("beginPaste", "items", "clear", "setString hello", "key down", "key up", "endPaste"));
}

TEST_F(ClipboardPasteInsertionServiceTest, skipsKeyEventsThatCannotBeCreated)
{
    poster->makesDown = false;
    insert(u"hello"_s);
    clock->advance(1s);
    EXPECT_EQ(outcome, u"done"_s);
    EXPECT_THAT(poster->posted, ElementsAre(KeyEvent{9, false, 0x100000}));
}

} // namespace talmo::test
