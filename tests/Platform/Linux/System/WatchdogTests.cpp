#include "Platform/Linux/System/Watchdog.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <unistd.h>

namespace talmo::test {

namespace {

/// Does nothing for this long, then ends by itself.
[[noreturn]] void hang(unsigned seconds)
{
    while (seconds > 0) {
        seconds = ::sleep(seconds);
    }
    std::_Exit(EXIT_SUCCESS);
}

} // namespace

TEST(WatchdogDeathTest, killsProcessThatHangs)
{
    EXPECT_EXIT(
        {
            killProcessAfter(1);
            hang(10);
        },
        testing::KilledBySignal(SIGALRM), "");
}

TEST(WatchdogDeathTest, laterCallReplacesEarlierOne)
{
    EXPECT_EXIT(
        {
            killProcessAfter(1);
            killProcessAfter(10);
            hang(2);
        },
        testing::ExitedWithCode(EXIT_SUCCESS), "");
}

} // namespace talmo::test
