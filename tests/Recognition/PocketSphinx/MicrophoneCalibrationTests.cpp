#include "Recognition/PocketSphinx/MicrophoneCalibration.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

const std::vector<std::int16_t> halfASecond(8000, 1);

} // namespace

TEST(MicrophoneCalibration, knownMicrophoneNeedsNone)
{
    EXPECT_FALSE(MicrophoneCalibration(false).isUnderWay());
}

TEST(MicrophoneCalibration, triesAfterOneAndAHalfSecondsThenEveryHalf)
{
    MicrophoneCalibration calibration(true);
    EXPECT_FALSE(calibration.hold(halfASecond));
    EXPECT_FALSE(calibration.hold(halfASecond));
    EXPECT_TRUE(calibration.hold(halfASecond));
    EXPECT_FALSE(calibration.hold(std::span(halfASecond).first(7999)));
    EXPECT_TRUE(calibration.hold(std::span(halfASecond).first(1)));
}

TEST(MicrophoneCalibration, isExhaustedAfterSixSeconds)
{
    MicrophoneCalibration calibration(true);
    for (int count = 0; count < 11; ++count) {
        calibration.hold(halfASecond);
    }
    EXPECT_FALSE(calibration.isExhausted());
    calibration.hold(halfASecond);
    EXPECT_TRUE(calibration.isExhausted());
}

TEST(MicrophoneCalibration, returnsEverythingHeldWhenItEnds)
{
    MicrophoneCalibration calibration(true);
    calibration.hold(halfASecond);
    EXPECT_EQ(calibration.finish(), halfASecond);
    EXPECT_FALSE(calibration.isUnderWay());
    EXPECT_TRUE(calibration.held().empty());
}

} // namespace talmo::test
