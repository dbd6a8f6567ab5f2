#pragma once

#include "Contract/ContractTest.h"
#include "Input/Hotkey/EventMonitor.h"
#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <gmock/gmock.h>

#include <memory>
#include <optional>
#include <vector>

namespace talmo::test {

/// What every source of keys promises. A subject has `monitor`, press(), release() and setActive(); and, where the
/// desktop learns late which keys to report, awaitKeys().
template <typename Subject>
class EventMonitorContract : public ContractTest<Subject> {
protected:
    using ContractTest<Subject>::subject;

    void addBoth()
    {
        global = subject().monitor.addGlobalMonitor(GlobalHotkeyManager::flagsChangedMask, [this](const auto &event) {
            globalEvents.push_back(event.modifierFlags & GlobalHotkeyManager::functionFlag);
        });
        local = subject().monitor.addLocalMonitor(GlobalHotkeyManager::flagsChangedMask, [this](const auto &event) {
            localEvents.push_back(event.modifierFlags & GlobalHotkeyManager::functionFlag);
            return std::optional(event);
        });
        if constexpr (requires(Subject tested) { tested.awaitKeys(); }) {
            subject().awaitKeys();
        }
    }
    bool waitForEvents(std::size_t count)
    {
        return waitFor([&] { return globalEvents.size() + localEvents.size() >= count; });
    }
    std::vector<quint64> globalEvents;
    std::vector<quint64> localEvents;
    std::shared_ptr<EventMonitorToken> global;
    std::shared_ptr<EventMonitorToken> local;
};

TYPED_TEST_SUITE_P(EventMonitorContract);

TYPED_TEST_P(EventMonitorContract, seesPressAndReleaseInOtherApplications)
{
    constexpr quint64 fn = GlobalHotkeyManager::functionFlag;
    this->addBoth();
    ASSERT_TRUE(this->global && this->local);
    this->subject().press();
    ASSERT_TRUE(this->waitForEvents(1));
    this->subject().release();
    ASSERT_TRUE(this->waitForEvents(2));
    EXPECT_THAT(this->globalEvents, testing::ElementsAre(fn, 0U));
    EXPECT_THAT(this->localEvents, testing::IsEmpty());
}

TYPED_TEST_P(EventMonitorContract, localMonitorSeesEventsWhenApplicationIsActive)
{
    constexpr quint64 fn = GlobalHotkeyManager::functionFlag;
    this->addBoth();
    this->subject().setActive(true);
    this->subject().press();
    ASSERT_TRUE(this->waitForEvents(1));
    this->subject().release();
    ASSERT_TRUE(this->waitForEvents(2));
    EXPECT_THAT(this->localEvents, testing::ElementsAre(fn, 0U));
    EXPECT_THAT(this->globalEvents, testing::IsEmpty());
}

TYPED_TEST_P(EventMonitorContract, monitorReceivesNothingAfterTokenIsReleased)
{
    this->addBoth();
    this->global.reset();
    std::vector<quint64> other;
    const auto second = this->subject().monitor.addGlobalMonitor(
        GlobalHotkeyManager::flagsChangedMask,
        [&other](const FlagsChangedEvent &event) { other.push_back(event.modifierFlags); });
    this->subject().press();
    ASSERT_TRUE(waitFor([&other] { return !other.empty(); }));
    EXPECT_THAT(this->globalEvents, testing::IsEmpty());
    this->subject().release();
    ASSERT_TRUE(waitFor([&other] { return other.size() == 2; }));
}

REGISTER_TYPED_TEST_SUITE_P(EventMonitorContract, seesPressAndReleaseInOtherApplications,
                            localMonitorSeesEventsWhenApplicationIsActive, monitorReceivesNothingAfterTokenIsReleased);

} // namespace talmo::test
