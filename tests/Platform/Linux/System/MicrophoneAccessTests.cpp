#include "Base/Task.h"
#include "Input/Permissions/PermissionsManager.h"
#include "Platform/Linux/System/LinuxAuthorizationSource.h"
#include "Support/FakeEventMonitor.h"
#include "Support/FakePermissions.h"
#include "Support/TestLoop.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

class MicrophoneAccess : public testing::Test {
protected:
    bool isRefused = true;
    int questions = 0;
    /// The server accepts the second request.
    std::shared_ptr<LinuxAuthorizationSource> source =
        std::make_shared<LinuxAuthorizationSource>([this] { return isRefused; },
                                                   [this] {
                                                       ++questions;
                                                       isRefused = false;
                                                       return makeReadyFuture(true);
                                                   });
    PermissionsManager permissions{source, std::make_shared<FakeInputTrust>(), std::make_shared<FakePaneOpener>()};
};

QCoro::Task<void> request(PermissionsManager *permissions)
{
    co_await permissions->requestMicrophonePermission();
}

} // namespace

TEST_F(MicrophoneAccess, requestRetriesAfterRefusal)
{
    EXPECT_EQ(permissions.microphoneStatus(), SimpleStatus::Denied);
    logEscapes(request(&permissions));
    settle();
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(permissions.microphoneStatus(), SimpleStatus::Granted);
}

TEST_F(MicrophoneAccess, doesNotAskWhenGranted)
{
    isRefused = false;
    EXPECT_TRUE(source->requestMicrophoneAccess().result());
    EXPECT_EQ(questions, 0);
}

TEST_F(MicrophoneAccess, refreshDoesNotAsk)
{
    permissions.refresh();
    EXPECT_EQ(questions, 0);
}

} // namespace talmo::test
