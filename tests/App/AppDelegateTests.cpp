#include "App/AppDelegate.h"

#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

namespace talmo::test {

TEST(AppDelegate, becomesAccessoryAppThenStartsListeningOnLaunch)
{
    ViewWorld world;
    const auto shell = std::make_shared<FakeShell>();
    TalmoCoordinator::setSharedFactory([&] {
        EXPECT_THAT(shell->calls, testing::ElementsAre("accessory"));
        EXPECT_THAT(world.world.takeCalls(), testing::IsEmpty());
        return std::move(world.world.coordinator);
    });
    AppDelegate delegate(shell, world.permissions);
    EXPECT_THAT(shell->calls, testing::IsEmpty());
    delegate.applicationDidFinishLaunching();
    EXPECT_THAT(shell->calls, testing::ElementsAre("accessory"));
    EXPECT_THAT(world.world.takeCalls(), testing::ElementsAre("hotkeys.start"));
    TalmoCoordinator::releaseShared();
    TalmoCoordinator::setSharedFactory({});
}

TEST(AppDelegate, refreshesPermissionsOnActivation)
{
    ViewWorld world;
    AppDelegate delegate(std::make_shared<FakeShell>(), world.permissions);
    world.authorization->microphone = 0;
    EXPECT_EQ(world.permissions->microphoneStatus(), SimpleStatus::Granted);
    delegate.applicationDidBecomeActive();
    EXPECT_EQ(world.permissions->microphoneStatus(), SimpleStatus::NotDetermined);
}

TEST(AppDelegate, supportsSecureRestorableState)
{
    EXPECT_TRUE(AppDelegate::applicationSupportsSecureRestorableState());
}

} // namespace talmo::test
