#include "Platform/Linux/X11/Keys/XInputTrust.h"

#include "Platform/Linux/Keys/TriggerKeys.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "VirtualDesktop.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

std::shared_ptr<XInput2EventMonitor> monitorOn(const XSession &session)
{
    return std::make_shared<XInput2EventMonitor>(session.postedKeys(), triggerKeySymbols({}), [] { return false; });
}

} // namespace

TEST(XInputTrust, grantedWhereKeysCanBeObservedAndTyped)
{
    const testbed::VirtualDesktop desktop;
    const auto session = XSession::open();
    XInputTrust trust(session, monitorOn(*session));
    EXPECT_TRUE(trust.isTrusted());
    EXPECT_TRUE(trust.requestTrust());
}

TEST(XInputTrust, refusedWhereNothingCanBeTyped)
{
    const testbed::VirtualDesktop desktop({u"-extension"_s, u"XTEST"_s});
    const auto session = XSession::open();
    XInputTrust trust(session, monitorOn(*session));
    EXPECT_FALSE(trust.isTrusted());
    EXPECT_FALSE(trust.requestTrust());
}

TEST(XInputTrust, typingAloneNeedsNoMonitor)
{
    const testbed::VirtualDesktop desktop;
    EXPECT_TRUE(XInputTrust(XSession::open(), nullptr).isTrusted());
}

TEST(XInputTrust, refusedOnceKeysCanNoLongerBeObserved)
{
    testbed::VirtualDesktop desktop;
    const auto session = XSession::open();
    const auto monitor = monitorOn(*session);
    const XInputTrust trust(session, monitor);
    desktop.killServer();
    EXPECT_TRUE(waitFor([&trust] { return !trust.isTrusted(); }));
}

} // namespace talmo::test
