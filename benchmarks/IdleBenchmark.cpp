#include "Benchmarks.h"

namespace talmo::benchmarks {

using namespace std::chrono_literals;

namespace {

void addMemory(const TalmoDesktop &on, Figures &figures, const QString &when)
{
    figures.row(QStringLiteral("resident set ") + when, QStringLiteral("MB")).add(on.residentSize() / 1024);
    figures.row(QStringLiteral("  of it, shared with nobody"), QStringLiteral("MB")).add(on.privateSize() / 1024);
}

} // namespace

void measureIdling(TalmoDesktop &on, Figures &figures)
{
    /// Qt's threads that have nothing to do end after 30 seconds.
    constexpr auto aftermath = 35s;
    on.startTalmo();
    testbed::sleepFor(aftermath);
    addMemory(on, figures, QStringLiteral("before the first dictation"));
    const double before = on.switches();
    testbed::sleepFor(30s);
    figures.row(QStringLiteral("wake-ups of any thread in 30 s"), QString()).add(on.switches() - before);
}

void measureUnloading(TalmoDesktop &on, Figures &figures)
{
    /// Ten minutes after the last dictation the engine is unloaded.
    constexpr auto untilUnloaded = 630s;
    on.startTalmo();
    dictateOnce(on, figures, QStringLiteral("before unloading"));
    dictateOnce(on, figures, QStringLiteral("before unloading"));
    testbed::sleepFor(untilUnloaded);
    addMemory(on, figures, QStringLiteral("after unloading"));
    dictateOnce(on, figures, QStringLiteral("after unloading"));
}

} // namespace talmo::benchmarks
