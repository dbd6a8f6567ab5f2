#include "Platform/Linux/Keys/TriggerKeyFilter.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

using namespace std::chrono_literals;

constexpr std::uint8_t rightControl = 105;
constexpr std::uint8_t f13 = 191;
constexpr std::uint8_t letterC = 54;

class TriggerKeyFilterTest : public testing::Test {
protected:
    TriggerKeyFilterTest() { filter.setKeyCodes({rightControl, f13}); }
    TriggerKeyFilter filter;
    const TriggerKeyFilter::Time start{1h};
};

} // namespace

TEST_F(TriggerKeyFilterTest, reportsPressAndRelease)
{
    EXPECT_EQ(filter.keyDown(rightControl, start), true);
    EXPECT_EQ(filter.keyUp(rightControl), false);
}

TEST_F(TriggerKeyFilterTest, ignoresOtherKeysAlone)
{
    EXPECT_EQ(filter.keyDown(letterC, start), std::nullopt);
    EXPECT_EQ(filter.keyUp(letterC), std::nullopt);
}

TEST_F(TriggerKeyFilterTest, anotherKeySoonAfterPressRetractsIt)
{
    filter.keyDown(rightControl, start);
    EXPECT_EQ(filter.keyDown(letterC, start + 100ms), false);
    EXPECT_EQ(filter.keyUp(letterC), std::nullopt);
    EXPECT_EQ(filter.keyUp(rightControl), std::nullopt);
}

TEST_F(TriggerKeyFilterTest, copyThenPasteIsNotADoubleTap)
{
    filter.keyDown(rightControl, start);
    EXPECT_EQ(filter.keyDown(letterC, start + 50ms), false);
    filter.keyUp(rightControl);
    EXPECT_EQ(filter.keyDown(rightControl, start + 250ms), std::nullopt);
    EXPECT_EQ(filter.keyDown(letterC, start + 300ms), std::nullopt);
    EXPECT_EQ(filter.withheldUntil(), std::nullopt);
    EXPECT_EQ(filter.keyUp(rightControl), std::nullopt);
    EXPECT_EQ(filter.keyDown(rightControl, start + 601ms), true);
}

TEST_F(TriggerKeyFilterTest, pressAfterModifierUseIsReportedAfterDelay)
{
    filter.keyDown(rightControl, start);
    filter.keyDown(letterC, start + 50ms);
    filter.keyUp(rightControl);
    EXPECT_EQ(filter.keyDown(rightControl, start + 200ms), std::nullopt);
    EXPECT_EQ(filter.withheldUntil(), start + 351ms);
    EXPECT_EQ(filter.timePassed(start + 350ms), std::nullopt);
    EXPECT_EQ(filter.timePassed(start + 351ms), true);
    EXPECT_EQ(filter.keyUp(rightControl), false);
}

TEST_F(TriggerKeyFilterTest, shortPressAfterModifierUseIsIgnored)
{
    filter.keyDown(rightControl, start);
    filter.keyDown(letterC, start + 50ms);
    filter.keyUp(rightControl);
    filter.keyDown(rightControl, start + 200ms);
    EXPECT_EQ(filter.keyUp(rightControl), std::nullopt);
    EXPECT_EQ(filter.withheldUntil(), std::nullopt);
    EXPECT_EQ(filter.timePassed(start + 1s), std::nullopt);
}

TEST_F(TriggerKeyFilterTest, modifierKeptDownNeverStartsDictation)
{
    filter.keyDown(rightControl, start);
    filter.keyDown(letterC, start + 50ms);
    EXPECT_EQ(filter.withheldUntil(), std::nullopt);
    EXPECT_EQ(filter.timePassed(start + 10s), std::nullopt);
}

TEST_F(TriggerKeyFilterTest, otherKeysDoNotRetractConfirmedHold)
{
    filter.keyDown(rightControl, start);
    EXPECT_EQ(filter.keyDown(letterC, start + 150ms), std::nullopt);
    EXPECT_EQ(filter.keyUp(rightControl), false);
}

TEST_F(TriggerKeyFilterTest, severalTriggerKeysCountAsOne)
{
    EXPECT_EQ(filter.keyDown(rightControl, start), true);
    EXPECT_EQ(filter.keyDown(f13, start + 10ms), std::nullopt);
    EXPECT_EQ(filter.keyUp(rightControl), std::nullopt);
    EXPECT_EQ(filter.keyUp(f13), false);
}

TEST_F(TriggerKeyFilterTest, ignoresRepeatsAndStrayReleases)
{
    EXPECT_EQ(filter.keyUp(rightControl), std::nullopt);
    filter.keyDown(rightControl, start);
    EXPECT_EQ(filter.keyDown(rightControl, start + 10ms), std::nullopt);
}

} // namespace talmo::test
