#include "App/LingeringOverlay.h"

#include "Support/ManualClock.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Card final : public OverlayService {
public:
    std::vector<std::string> calls;
    void show() override { calls.emplace_back("show"); }
    void hide() override { calls.emplace_back("hide"); }
};

class LingeringOverlayTest : public testing::Test {
protected:
    ~LingeringOverlayTest() override { clock->advance(LingeringOverlay::readingTime); }

    std::shared_ptr<Card> card = std::make_shared<Card>();
    std::shared_ptr<DictationNotice> notice = std::make_shared<DictationNotice>();
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    LingeringOverlay overlay{card, notice, clock};
};

} // namespace

TEST_F(LingeringOverlayTest, hidesAtOnceWithoutALastWord)
{
    overlay.show();
    overlay.hide();
    EXPECT_THAT(card->calls, ElementsAre("show", "hide"));
}

TEST_F(LingeringOverlayTest, lastWordStaysForAMoment)
{
    overlay.show();
    notice->setFarewell(u"Cancelled"_s);
    overlay.hide();
    EXPECT_THAT(card->calls, ElementsAre("show", "show"));
    clock->advance(LingeringOverlay::readingTime - std::chrono::milliseconds(1));
    EXPECT_EQ(notice->farewell(), u"Cancelled"_s);
    EXPECT_THAT(card->calls, ElementsAre("show", "show"));
    clock->advance(std::chrono::milliseconds(1));
    EXPECT_THAT(card->calls, ElementsAre("show", "show", "hide"));
    EXPECT_EQ(notice->farewell(), QString());
}

TEST_F(LingeringOverlayTest, nextRecordingReplacesTheLastWord)
{
    overlay.show();
    notice->setFarewell(u"Cancelled"_s);
    overlay.hide();
    overlay.show();
    EXPECT_EQ(notice->farewell(), QString());
    card->calls.clear();
    clock->advance(LingeringOverlay::readingTime);
    EXPECT_THAT(card->calls, IsEmpty());
}

TEST_F(LingeringOverlayTest, quittingEndsTheWait)
{
    {
        LingeringOverlay shortLived(card, notice, clock);
        notice->setFarewell(u"Cancelled"_s);
        shortLived.hide();
        EXPECT_EQ(clock->sleeperCount(), 1U);
    }
    settle();
    EXPECT_EQ(clock->sleeperCount(), 0U);
    EXPECT_THAT(card->calls, ElementsAre("show"));
}

} // namespace talmo::test
