#include "Platform/Linux/System/QuitSignals.h"

#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <QProcess>

#include <gmock/gmock.h>

#include <array>
#include <csignal>

namespace talmo::test {

namespace {

/// Restores the previous signal handlers.
class QuitSignalsTest : public testing::Test {
protected:
    static constexpr std::array numbers = {SIGINT, SIGTERM, SIGHUP};

    QuitSignalsTest()
    {
        for (std::size_t index = 0; index < numbers.size(); ++index) {
            sigaction(numbers.at(index), nullptr, &before.at(index));
        }
        QuitSignals::install();
    }
    ~QuitSignalsTest() override
    {
        for (std::size_t index = 0; index < numbers.size(); ++index) {
            sigaction(numbers.at(index), &before.at(index), nullptr);
        }
    }

    std::array<struct sigaction, numbers.size()> before{};
};

} // namespace

TEST_F(QuitSignalsTest, eachSignalRequestsQuit)
{
    QuitSignals quitSignals;
    int requests = 0;
    QObject::connect(&quitSignals, &QuitSignals::quitRequested, &quitSignals, [&requests] { ++requests; });
    int expected = 0;
    for (const int number : numbers) {
        ASSERT_EQ(raise(number), 0);
        ++expected;
        EXPECT_TRUE(waitFor([&] { return requests == expected; })) << number;
    }
}

TEST_F(QuitSignalsTest, signalBeforeConstructionIsNotLost)
{
    ASSERT_EQ(raise(SIGTERM), 0);
    QuitSignals quitSignals;
    bool isAsked = false;
    QObject::connect(&quitSignals, &QuitSignals::quitRequested, &quitSignals, [&isAsked] { isAsked = true; });
    EXPECT_TRUE(waitFor([&] { return isAsked; }));
}

TEST_F(QuitSignalsTest, childStartsWithNoSignalBlockedOrIgnored)
{
    QProcess child;
    child.start(u"grep"_s, {u"-E"_s, u"^Sig(Blk|Ign):"_s, u"/proc/self/status"_s});
    ASSERT_TRUE(child.waitForFinished());
    const QString nothing = u"0"_s.repeated(16);
    const QString status = QString::fromLatin1(child.readAll());
    EXPECT_TRUE(status.contains(u"SigBlk:\t"_s + nothing)) << status.toStdString();
    const auto ignored = status.section(u"SigIgn:\t"_s, 1).section(u'\n', 0, 0).toULongLong(nullptr, 16);
    for (const int number : numbers) {
        EXPECT_EQ(ignored & (1ULL << (number - 1)), 0U) << number;
    }
}

TEST_F(QuitSignalsTest, descriptorIsNotInherited)
{
    QProcess child;
    child.start(u"ls"_s, {u"-l"_s, u"/proc/self/fd"_s});
    ASSERT_TRUE(child.waitForFinished());
    EXPECT_THAT(child.readAll().toStdString(), testing::Not(testing::HasSubstr("eventfd")));
}

} // namespace talmo::test
