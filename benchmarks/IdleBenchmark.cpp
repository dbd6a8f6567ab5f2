#include "Benchmarks.h"

namespace talmo::benchmarks {

using namespace std::chrono_literals;

void measureIdling(TalmoDesktop &on, Figures &figures)
{
    constexpr int starts = 5;
    /// Qt's threads that have nothing to do end after 30 seconds.
    constexpr auto aftermath = 35s;
    for (int start = 0; start < starts; ++start) {
        const auto [begin, ready] = on.startTalmo();
        figures.row(QStringLiteral("start -> key live")).add(begin, ready);
    }
    testbed::sleepFor(aftermath);
    figures.row(QStringLiteral("resident set before the first dictation"), QStringLiteral("MB"))
        .add(on.residentSize() / 1024);
    const double before = on.switches();
    testbed::sleepFor(30s);
    figures.row(QStringLiteral("wake-ups of any thread in 30 s"), QString()).add(on.switches() - before);
}

} // namespace talmo::benchmarks
