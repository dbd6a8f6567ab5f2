// The keyboard layout changes while the key is held.

#include "Platform/Linux/Keys/TriggerKeyFilter.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

using namespace std::chrono_literals;

constexpr std::uint8_t rightControl = 105;
constexpr std::uint8_t f13 = 191;

class KeyboardChangeTest : public testing::Test {
protected:
    KeyboardChangeTest()
    {
        filter.setKeyCodes({rightControl});
        EXPECT_EQ(filter.keyDown(rightControl, start), true);
        filter.setKeyCodes({f13});
    }
    TriggerKeyFilter filter;
    const TriggerKeyFilter::Time start{1h};
};

} // namespace

TEST_F(KeyboardChangeTest, heldKeysReleaseIsReported)
{
    EXPECT_TRUE(filter.isWatched(rightControl));
    EXPECT_EQ(filter.keyUp(rightControl), false);
    EXPECT_FALSE(filter.isWatched(rightControl));
}

TEST_F(KeyboardChangeTest, heldKeysRepeatIsNotAnotherKey)
{
    EXPECT_EQ(filter.keyDown(rightControl, start + 1ms), std::nullopt);
    EXPECT_TRUE(filter.isReportedDown());
}

TEST_F(KeyboardChangeTest, newKeyCountsAfterOldKeyIsReleased)
{
    filter.keyUp(rightControl);
    EXPECT_EQ(filter.keyDown(rightControl, start + 1s), std::nullopt);
    EXPECT_EQ(filter.keyDown(f13, start + 1s), true);
    EXPECT_EQ(filter.keyUp(f13), false);
}

} // namespace talmo::test
