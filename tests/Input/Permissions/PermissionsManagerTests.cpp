#include "Input/Permissions/PermissionsManager.h"

#include "Support/FakeEventMonitor.h"
#include "Support/FakePermissions.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

class PermissionsManagerTest : public testing::Test {
protected:
    std::shared_ptr<FakeAuthorization> source = std::make_shared<FakeAuthorization>();
    std::shared_ptr<FakeInputTrust> trust = std::make_shared<FakeInputTrust>();
    std::shared_ptr<FakePaneOpener> panes = std::make_shared<FakePaneOpener>();
};

} // namespace

TEST_F(PermissionsManagerTest, readsAllThreeOnConstruction)
{
    const PermissionsManager manager(source, trust, panes);
    EXPECT_TRUE(manager.allGranted());
}

TEST_F(PermissionsManagerTest, mapsRestrictedToDeniedAndUnknownToUndetermined)
{
    const std::pair<int, SimpleStatus> table[] = {{0, SimpleStatus::NotDetermined}, {1, SimpleStatus::Denied},
                                                  {2, SimpleStatus::Denied},        {3, SimpleStatus::Granted},
                                                  {4, SimpleStatus::NotDetermined}, {-1, SimpleStatus::NotDetermined}};
    for (const auto &[raw, status] : table) {
        source->microphone = raw;
        source->speech = raw;
        const PermissionsManager manager(source, trust, panes);
        EXPECT_EQ(manager.microphoneStatus(), status) << raw;
        EXPECT_EQ(manager.speechRecognitionStatus(), status) << raw;
    }
}

TEST_F(PermissionsManagerTest, allGrantedNeedsAllThree)
{
    for (int missing = 0; missing < 3; ++missing) {
        source->microphone = missing == 0 ? 2 : 3;
        source->speech = missing == 1 ? 1 : 3;
        trust->trusted = missing != 2;
        EXPECT_FALSE(PermissionsManager(source, trust, panes).allGranted()) << missing;
    }
}

TEST_F(PermissionsManagerTest, requestReturnsAnswerAndRereads)
{
    source->microphone = 0;
    PermissionsManager manager(source, trust, panes);
    std::optional<bool> granted;
    auto task = manager.requestMicrophonePermission().then([&granted](bool answer) { granted = answer; });
    settle();
    EXPECT_FALSE(granted);
    source->microphone = 3;
    source->microphoneAnswer->finish(true);
    settle();
    EXPECT_EQ(granted, true);
    EXPECT_EQ(manager.microphoneStatus(), SimpleStatus::Granted);
}

TEST_F(PermissionsManagerTest, onlyAuthorizedSpeechCountsAsGranted)
{
    PermissionsManager manager(source, trust, panes);
    std::optional<bool> granted;
    auto task = manager.requestSpeechRecognitionPermission().then([&granted](bool answer) { granted = answer; });
    source->speech = 2;
    source->speechAnswer->finish(2);
    settle();
    EXPECT_EQ(granted, false);
    EXPECT_EQ(manager.speechRecognitionStatus(), SimpleStatus::Denied);
}

TEST_F(PermissionsManagerTest, trustStaysFalseUntilRefresh)
{
    trust->trusted = false;
    PermissionsManager manager(source, trust, panes);
    manager.requestAccessibility();
    EXPECT_EQ(trust->requests, 1);
    EXPECT_FALSE(manager.accessibilityGranted());
    trust->trusted = true;
    EXPECT_FALSE(manager.accessibilityGranted());
    manager.refresh();
    EXPECT_TRUE(manager.accessibilityGranted());
}

TEST_F(PermissionsManagerTest, decidedPermissionIsStillRequestedAndReread)
{
    PermissionsManager manager(source, trust, panes);
    source->microphone = 1;
    source->microphoneAnswer->finish(false);
    std::optional<bool> granted;
    auto task = manager.requestMicrophonePermission().then([&granted](bool answer) { granted = answer; });
    settle();
    EXPECT_EQ(granted, false);
    EXPECT_EQ(manager.microphoneStatus(), SimpleStatus::Denied);
}

TEST_F(PermissionsManagerTest, opensPanesAndNothingElse)
{
    PermissionsManager manager(source, trust, panes);
    manager.openAccessibilitySettings();
    EXPECT_THAT(panes->opened, testing::ElementsAre(SettingsPane::Accessibility));
    manager.openMicrophoneSettings();
    EXPECT_THAT(panes->opened, testing::ElementsAre(SettingsPane::Accessibility, SettingsPane::Microphone));
}

} // namespace talmo::test
