#pragma once

#include "Support/RecordingLog.h"
#include "Support/RecordingWorld.h"

#include <gmock/gmock.h>

namespace talmo::test {

/// A coordinator that has started, in a world of fakes.
class CoordinatorFixture : public testing::Test {
protected:
    CoordinatorFixture()
    {
        world.coordinator->start();
        world.takeCalls();
    }

    void press()
    {
        world.hotkeys->down();
        settle();
    }
    void release()
    {
        world.hotkeys->up();
        settle();
    }
    TalmoState state() const { return world.coordinator->state(); }

    RecordingLog log;
    RecordingWorld world;
};

} // namespace talmo::test
