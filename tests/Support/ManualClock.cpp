#include "Support/ManualClock.h"

#include "Support/TestLoop.h"

#include <algorithm>

namespace talmo::test {

QFuture<void> ManualClock::sleep(Duration duration, std::stop_token stop)
{
    m_requested.push_back(duration);
    auto sleeper = std::make_shared<Sleeper>();
    sleeper->due = m_now + duration;
    m_sleepers.push_back(sleeper);
    sleeper->onStop.emplace(
        stop, [completion = sleeper->completion] { completion->fail(std::make_exception_ptr(Cancelled())); });
    return sleeper->completion->future();
}

void ManualClock::advance(Duration duration)
{
    settle();
    const Instant until = m_now + duration;
    while (const auto sleeper = takeNextDue(until)) {
        m_now = std::max(m_now, sleeper->due);
        sleeper->completion->finish();
        settle();
    }
    m_now = until;
    settle();
}

std::shared_ptr<ManualClock::Sleeper> ManualClock::takeNextDue(Instant until)
{
    std::erase_if(m_sleepers, [](const auto &sleeper) { return sleeper->completion->isDone(); });
    const auto next = std::min_element(m_sleepers.begin(), m_sleepers.end(),
                                       [](const auto &left, const auto &right) { return left->due < right->due; });
    if (next == m_sleepers.end() || (*next)->due > until) {
        return nullptr;
    }
    auto sleeper = *next;
    m_sleepers.erase(next);
    return sleeper;
}

void ManualClock::suspend(Duration duration)
{
    m_now += duration;
    advance(Duration::zero());
}

std::size_t ManualClock::sleeperCount() const
{
    return static_cast<std::size_t>(std::count_if(m_sleepers.begin(), m_sleepers.end(),
                                                  [](const auto &sleeper) { return !sleeper->completion->isDone(); }));
}

} // namespace talmo::test
