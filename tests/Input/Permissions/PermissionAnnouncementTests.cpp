// The order in which permissions are read, announced and stored.

#include "Input/Permissions/PermissionsManager.h"

#include "Support/FakePermissions.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

using testing::ElementsAre;

class PermissionAnnouncementTest : public testing::Test {
protected:
    /// The system's answers; records every query and the manager's values at that time.
    class Authorization final : public AuthorizationSource {
    public:
        explicit Authorization(PermissionAnnouncementTest &test)
            : m_test(test)
        {
        }
        int raw = 3;
        std::shared_ptr<Completion<bool>> microphone = Completion<bool>::make();
        std::shared_ptr<Completion<int>> speech = Completion<int>::make();
        int microphoneStatus() const override
        {
            m_test.note("microphone");
            return raw;
        }
        int speechRecognitionStatus() const override
        {
            m_test.note("speech");
            return raw;
        }
        QFuture<bool> requestMicrophoneAccess() override { return microphone->future(); }
        QFuture<int> requestSpeechRecognitionAuthorization() override { return speech->future(); }

    private:
        PermissionAnnouncementTest &m_test;
    };

    class Trust final : public InputTrust {
    public:
        explicit Trust(PermissionAnnouncementTest &test)
            : m_test(test)
        {
        }
        bool trusted = true;
        bool isTrusted() const override
        {
            m_test.note("trust");
            return trusted;
        }
        bool requestTrust() override
        {
            m_test.note("request");
            return trusted;
        }

    private:
        PermissionAnnouncementTest &m_test;
    };

    PermissionAnnouncementTest()
    {
        manager = std::make_unique<PermissionsManager>(source, trust, std::make_shared<FakePaneOpener>());
        madeWith = std::exchange(trace, {});
        QObject::connect(manager.get(), &Observable::objectWillChange, manager.get(), [this] { note("announced"); });
    }

    void note(const std::string &what)
    {
        trace.push_back(manager ? what + " " + std::to_string(static_cast<int>(manager->microphoneStatus())) +
                                      std::to_string(static_cast<int>(manager->speechRecognitionStatus())) +
                                      std::to_string(static_cast<int>(manager->accessibilityGranted()))
                                : what);
    }

    std::vector<std::string> trace;
    std::vector<std::string> madeWith;
    std::shared_ptr<Authorization> source = std::make_shared<Authorization>(*this);
    std::shared_ptr<Trust> trust = std::make_shared<Trust>(*this);
    std::unique_ptr<PermissionsManager> manager;
};

} // namespace

TEST_F(PermissionAnnouncementTest, readsAllThreeInOrderOnConstruction)
{
    EXPECT_THAT(madeWith, ElementsAre("microphone", "speech", "trust"));
}

TEST_F(PermissionAnnouncementTest, refreshReadsAnnouncesAndStoresEachInTurn)
{
    source->raw = 1; // Granted is 1, denied 2 in the trace.
    trust->trusted = false;
    manager->refresh();
    EXPECT_THAT(trace, ElementsAre("microphone 111", "announced 111", "speech 211", "announced 211", "trust 221",
                                   "announced 221"));
    EXPECT_FALSE(manager->accessibilityGranted());
}

TEST_F(PermissionAnnouncementTest, requestingTrustAnnouncesOnceAndReadsNothingElse)
{
    trust->trusted = false;
    manager->requestAccessibility();
    EXPECT_THAT(trace, ElementsAre("request 111", "announced 111"));
    EXPECT_FALSE(manager->accessibilityGranted());
    trust->trusted = true;
    manager->requestAccessibility();
    EXPECT_TRUE(manager->accessibilityGranted());
}

TEST_F(PermissionAnnouncementTest, answerIsFollowedByRefresh)
{
    std::optional<bool> granted;
    auto task = manager->requestSpeechRecognitionPermission().then([&granted](bool answer) { granted = answer; });
    settle();
    EXPECT_THAT(trace, testing::IsEmpty());
    source->speech->finish(3);
    settle();
    EXPECT_EQ(granted, true);
    EXPECT_EQ(trace.size(), 6U);
}

TEST_F(PermissionAnnouncementTest, answersArriveAfterDestruction)
{
    std::optional<bool> microphone;
    std::optional<bool> speech;
    auto first = manager->requestMicrophonePermission().then([&microphone](bool answer) { microphone = answer; });
    auto second = manager->requestSpeechRecognitionPermission().then([&speech](bool answer) { speech = answer; });
    manager.reset();
    source->microphone->finish(true);
    source->speech->finish(0);
    settle();
    EXPECT_EQ(microphone, true);
    EXPECT_EQ(speech, false);
    EXPECT_THAT(trace, testing::IsEmpty());
}

} // namespace talmo::test
