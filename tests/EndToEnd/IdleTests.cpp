// While idle, no timer, repaint or wake-up occurs in any thread, and little memory is kept.

#include "EndToEnd/TalmoFixture.h"

#include "DesktopParts.h"
#include "Support/Printing.h"
#include "VirtualPointer.h"

#include <QFile>
#include <QSet>

namespace talmo::test {

using namespace std::chrono_literals;

namespace {

using IdleEndToEndTest = TalmoFixture;

constexpr auto watched = 30s;
/// Until everything after a dictation is over: the microphone's stream, the clipboard's restore, and Qt's drawing
/// threads, which exit after 30 idle seconds.
constexpr auto aftermath = 35s;

/// The system calls traced, without the one in which each thread was blocked when tracing started.
QStringList callsMade(const QString &file)
{
    QFile trace(file);
    if (!trace.open(QFile::ReadOnly)) {
        return {u"no trace"_s};
    }
    QStringList calls;
    QSet<QString> threads;
    for (const auto &line : QString::fromUtf8(trace.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QString thread = line.section(QLatin1Char(' '), 0, 0);
        if (threads.contains(thread)) {
            calls.append(line);
        }
        threads.insert(thread);
    }
    return calls;
}

/// The number in the line of /proc/PID/status with this name.
int kilobytesOf(qint64 process, const QByteArray &name)
{
    QFile status(u"/proc/%1/status"_s.arg(process));
    if (status.open(QFile::ReadOnly)) {
        for (const auto &line : status.readAll().split('\n')) {
            if (line.startsWith(name)) {
                return line.simplified().split(' ').value(1).toInt();
            }
        }
    }
    return -1;
}

} // namespace

TEST_F(IdleEndToEndTest, keepsLittleInMemoryBeforeTheFirstDictation)
{
    // What is not in a file: the heap, and what every thread touches of its stack. The rest is code, which other
    // programs share and the kernel can drop at any time.
    constexpr int mostOfItsOwn = 6 * 1024;
    startTalmo();
    const int ofItsOwn = kilobytesOf(talmo->processId(), "RssAnon:");
    EXPECT_GT(ofItsOwn, 0);
    EXPECT_LE(ofItsOwn, mostOfItsOwn);
}

TEST_F(IdleEndToEndTest, noThreadWakesUpWhileIdle)
{
    const auto tray = testbed::startTray(environment);
    openQtWindow();
    startTalmo();
    dictate(u"hello world"_s);
    ASSERT_TRUE(windowShows(u"Hello world."_s));
    testbed::VirtualPointer pointer;
    pointer.clickAt({1024 - 12, 12}); // The panel has been open once, too.
    testbed::sleepFor(500ms);
    pointer.clickAt({500, 600});
    testbed::sleepFor(aftermath);

    const QString file = desktop.folder() + u"/trace"_s;
    testbed::ChildProcess tracer(
        u"strace"_s, {u"-f"_s, u"-tt"_s, u"-o"_s, file, u"-p"_s, QString::number(talmo->processId())}, environment);
    testbed::sleepFor(1s);
    if (!tracer.isRunning()) {
        GTEST_SKIP() << "tracing is not permitted here, so wake-ups were NOT counted:\n" << qPrintable(tracer.output());
    }
    testbed::sleepFor(watched);
    tracer.terminate();
    const auto calls = callsMade(file);
    EXPECT_TRUE(calls.isEmpty()) << calls.size() << " calls:\n" << qPrintable(calls.mid(0, 40).join(QLatin1Char('\n')));

    // Prove that the tracer does record activity.
    testbed::ChildProcess second(u"strace"_s, {u"-f"_s, u"-o"_s, file, u"-p"_s, QString::number(talmo->processId())},
                                 environment);
    ASSERT_TRUE(second.waitForLine(u"attached"_s, timeout));
    pointer.clickAt({1024 - 12, 12});
    testbed::sleepFor(500ms);
    second.terminate();
    EXPECT_FALSE(callsMade(file).isEmpty());
}

} // namespace talmo::test
