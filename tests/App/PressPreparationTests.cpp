#include "App/PressPreparation.h"

#include "Support/GestureWorld.h"

#include <gmock/gmock.h>

namespace talmo::test {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class PressPreparationTest : public testing::Test {
protected:
    GestureWorld on;
};

} // namespace

TEST_F(PressPreparationTest, pressPreparesBeforeGestureIsDecided)
{
    on.press();
    EXPECT_THAT(on.world.calls, ElementsAre("preroll.begin", "warmUp"));
    on.pass(FnGestureRecognizer::holdThreshold);
    on.release();
    EXPECT_EQ(on.count("preroll.discard"), 0);
}

TEST_F(PressPreparationTest, tapDiscardsAudioAndClosesMicrophoneLater)
{
    on.press();
    on.world.takeCalls();
    on.release();
    EXPECT_THAT(on.world.takeCalls(), ElementsAre("preroll.discard"));
    on.pass(PressPreparation::readyTime - 1ms);
    EXPECT_THAT(on.world.calls, IsEmpty());
    on.pass(1ms);
    EXPECT_THAT(on.world.calls, ElementsAre("preroll.close"));
}

TEST_F(PressPreparationTest, secondTapRestartsAndKeepsMicrophoneOpen)
{
    on.doubleTap();
    on.pass(1s);
    EXPECT_EQ(on.state(), TalmoState::recording());
    EXPECT_EQ(on.count("preroll.begin"), 2);
    EXPECT_EQ(on.count("preroll.discard"), 1);
    EXPECT_EQ(on.count("preroll.close"), 0);
}

TEST_F(PressPreparationTest, pressEndingHandsFreePreparesNothing)
{
    on.doubleTap();
    on.pass(1s);
    on.world.takeCalls();
    on.press();
    on.release();
    EXPECT_EQ(on.state(), TalmoState::processing());
    EXPECT_EQ(on.count("warmUp"), 0);
    EXPECT_EQ(on.count("preroll.begin"), 0);
    EXPECT_EQ(on.count("preroll.discard"), 0);
}

TEST_F(PressPreparationTest, tapDuringInsertionDiscardsAudio)
{
    on.beInserting();
    on.world.takeCalls();
    on.press();
    on.release();
    on.endInsertion();
    on.pass(1s);
    EXPECT_EQ(on.count("preroll.discard"), 1);
    EXPECT_EQ(on.count("preroll.close"), 1);
    EXPECT_EQ(on.state(), TalmoState::idle());
}

TEST_F(PressPreparationTest, pressInOwnWindowsPreparesToo)
{
    on.keys->isApplicationActive = true;
    on.press();
    EXPECT_THAT(on.world.calls, ElementsAre("preroll.begin", "warmUp"));
}

} // namespace talmo::test
