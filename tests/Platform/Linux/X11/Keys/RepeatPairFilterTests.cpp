#include "Platform/Linux/X11/Keys/RepeatPairFilter.h"

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

constexpr std::uint8_t key = 105;

RawKey press(std::uint32_t time, std::uint16_t device = 3)
{
    return {key, device, true, time};
}
RawKey release(std::uint32_t time, std::uint16_t device = 3)
{
    return {key, device, false, time};
}

class RepeatPairFilterTest : public testing::Test {
protected:
    std::vector<RawKey> pushAndTake(std::initializer_list<RawKey> keys, bool hasTimedOut = false)
    {
        for (const auto &each : keys) {
            filter.push(each);
        }
        std::vector<RawKey> taken;
        while (const auto next = filter.take(hasTimedOut)) {
            taken.push_back(*next);
        }
        return taken;
    }
    RepeatPairFilter filter{[](std::uint8_t keyCode) { return keyCode == key; }};
};

} // namespace

TEST_F(RepeatPairFilterTest, passesRealKeysImmediately)
{
    EXPECT_THAT(pushAndTake({press(1000), release(2000), press(2300)}),
                testing::ElementsAre(press(1000), release(2000), press(2300)));
}

TEST_F(RepeatPairFilterTest, removesReleasePressPairs)
{
    EXPECT_THAT(pushAndTake({press(1000), release(1500), press(1500), release(1530), press(1531)}),
                testing::ElementsAre(press(1000)));
}

TEST_F(RepeatPairFilterTest, delaysReleaseOnRepeatingDevice)
{
    pushAndTake({press(1000), release(1500), press(1500)});
    EXPECT_THAT(pushAndTake({release(1530)}), testing::IsEmpty());
    EXPECT_TRUE(filter.isHoldingBack());
    EXPECT_THAT(pushAndTake({press(1530)}), testing::IsEmpty());
    EXPECT_FALSE(filter.isHoldingBack());
    EXPECT_THAT(pushAndTake({release(1560)}), testing::IsEmpty());
    EXPECT_THAT(pushAndTake({}, true), testing::ElementsAre(release(1560)));
}

TEST_F(RepeatPairFilterTest, doesNotDelayOtherDevices)
{
    pushAndTake({press(1000), release(1500), press(1500)});
    EXPECT_THAT(pushAndTake({release(1600, 4)}), testing::ElementsAre(release(1600, 4)));
}

TEST_F(RepeatPairFilterTest, realDoubleTapIsNotAPair)
{
    EXPECT_THAT(pushAndTake({release(1500), press(1502)}), testing::ElementsAre(release(1500), press(1502)));
}

} // namespace talmo::test
