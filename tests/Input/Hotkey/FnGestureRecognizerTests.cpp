#include "Input/Hotkey/FnGestureRecognizer.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

using namespace std::chrono_literals;
using Down = FnGestureRecognizer::DownResult;

const Instant start{1h};
const Down undecided{std::nullopt, true};
const Down handsFree{FnGestureSignal::Down, false};
const Down stopped{FnGestureSignal::Up, false};

} // namespace

TEST(FnGestureRecognizer, holdSignalsDownOnConfirmationAndUpOnRelease)
{
    FnGestureRecognizer recognizer;
    EXPECT_EQ(recognizer.fnDown(start), undecided);
    EXPECT_TRUE(recognizer.awaitingHoldConfirmation());
    EXPECT_TRUE(recognizer.confirmHold());
    EXPECT_EQ(recognizer.activeMode(), ActiveMode::Hold);
    EXPECT_FALSE(recognizer.awaitingHoldConfirmation());
    EXPECT_EQ(recognizer.fnUp(start + 2s), FnGestureSignal::Up);
    EXPECT_FALSE(recognizer.activeMode());
    EXPECT_EQ(recognizer.lastReleaseTime(), start + 2s);
}

TEST(FnGestureRecognizer, tapSignalsNothing)
{
    FnGestureRecognizer recognizer;
    EXPECT_EQ(recognizer.fnDown(start), undecided);
    EXPECT_EQ(recognizer.fnUp(start + 100ms), std::nullopt);
    EXPECT_FALSE(recognizer.confirmHold());
    EXPECT_FALSE(recognizer.activeMode());
}

TEST(FnGestureRecognizer, pressExactly300msAfterReleaseIsDoubleTap)
{
    FnGestureRecognizer recognizer;
    recognizer.fnDown(start);
    recognizer.fnUp(start + 50ms);
    EXPECT_EQ(recognizer.fnDown(start + 350ms), handsFree);
    EXPECT_EQ(recognizer.activeMode(), ActiveMode::Toggle);
    EXPECT_FALSE(recognizer.lastReleaseTime());
    EXPECT_FALSE(recognizer.awaitingHoldConfirmation());
}

TEST(FnGestureRecognizer, pressJustOver300msAfterReleaseIsNewPress)
{
    FnGestureRecognizer recognizer;
    recognizer.fnDown(start);
    recognizer.fnUp(start + 50ms);
    EXPECT_EQ(recognizer.fnDown(start + 350ms + 1ns), undecided);
    EXPECT_EQ(recognizer.lastReleaseTime(), start + 50ms);
}

TEST(FnGestureRecognizer, handsFreeLastsUntilNextPress)
{
    FnGestureRecognizer recognizer;
    recognizer.fnDown(start);
    recognizer.fnUp(start + 50ms);
    recognizer.fnDown(start + 100ms);
    EXPECT_EQ(recognizer.fnUp(start + 200ms), std::nullopt);
    EXPECT_EQ(recognizer.activeMode(), ActiveMode::Toggle);
    EXPECT_EQ(recognizer.fnDown(start + 250ms), stopped);
    EXPECT_FALSE(recognizer.activeMode());
}

TEST(FnGestureRecognizer, stoppingPressStartsNoTimerAndRecordsRelease)
{
    FnGestureRecognizer recognizer;
    recognizer.fnDown(start);
    recognizer.fnUp(start + 50ms);
    recognizer.fnDown(start + 100ms);
    recognizer.fnUp(start + 200ms);
    EXPECT_EQ(recognizer.fnDown(start + 10s), stopped);
    EXPECT_EQ(recognizer.lastReleaseTime(), start + 200ms);
    EXPECT_FALSE(recognizer.confirmHold());
    EXPECT_EQ(recognizer.fnUp(start + 11s), std::nullopt);
    EXPECT_EQ(recognizer.lastReleaseTime(), start + 11s);
    EXPECT_EQ(recognizer.fnDown(start + 11s + 300ms), handsFree);
}

TEST(FnGestureRecognizer, pressSoonAfterHoldStartsHandsFree)
{
    FnGestureRecognizer recognizer;
    recognizer.fnDown(start);
    recognizer.confirmHold();
    recognizer.fnUp(start + 5s);
    EXPECT_EQ(recognizer.fnDown(start + 5s + 200ms), handsFree);
}

TEST(FnGestureRecognizer, pressWithinDoubleTapWindowNeverStartsHoldTimer)
{
    FnGestureRecognizer recognizer;
    recognizer.fnDown(start);
    recognizer.fnUp(start + 10ms);
    EXPECT_FALSE(recognizer.fnDown(start + 20ms).needsHoldConfirmation);
    EXPECT_FALSE(recognizer.confirmHold());
    EXPECT_EQ(recognizer.fnUp(start + 5s), std::nullopt);
    EXPECT_EQ(recognizer.activeMode(), ActiveMode::Toggle);
}

TEST(FnGestureRecognizer, confirmHoldInActiveModeChangesNothing)
{
    FnGestureRecognizer recognizer;
    recognizer.fnDown(start);
    EXPECT_TRUE(recognizer.confirmHold());
    EXPECT_FALSE(recognizer.confirmHold());
    EXPECT_EQ(recognizer.activeMode(), ActiveMode::Hold);
}

TEST(FnGestureRecognizer, doubleTapEndsUndecidedPress)
{
    FnGestureRecognizer recognizer;
    recognizer.fnUp(start);
    EXPECT_EQ(recognizer.fnDown(start + 400ms), undecided);
    EXPECT_EQ(recognizer.fnDown(start + 300ms), handsFree);
    EXPECT_FALSE(recognizer.awaitingHoldConfirmation());
}

TEST(FnGestureRecognizer, newPressKeepsLastReleaseTime)
{
    FnGestureRecognizer recognizer;
    EXPECT_FALSE(recognizer.lastReleaseTime());
    recognizer.fnUp(start);
    recognizer.fnDown(start + 1s);
    EXPECT_EQ(recognizer.lastReleaseTime(), start);
    EXPECT_EQ(recognizer.fnUp(start + 1s + 149ms), std::nullopt);
    EXPECT_EQ(recognizer.lastReleaseTime(), start + 1s + 149ms);
    EXPECT_FALSE(recognizer.awaitingHoldConfirmation());
}

TEST(FnGestureRecognizer, hasExpectedConstants)
{
    EXPECT_EQ(FnGestureRecognizer::holdThreshold, 150ms);
    EXPECT_EQ(FnGestureRecognizer::doubleTapWindow, 300ms);
}

} // namespace talmo::test
