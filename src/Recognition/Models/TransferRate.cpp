#include "Recognition/Models/TransferRate.h"

namespace talmo {

namespace {

constexpr Duration observed = std::chrono::seconds(10);

} // namespace

void TransferRate::add(Instant time, qint64 bytes)
{
    if (!m_samples.empty() && bytes < m_samples.back().second) {
        m_samples.clear(); // The download restarted.
    }
    m_samples.emplace_back(time, bytes);
    while (m_samples.size() > 2 && time - m_samples.front().first > observed) {
        m_samples.pop_front();
    }
}

std::optional<double> TransferRate::perSecond() const
{
    if (m_samples.empty()) {
        return std::nullopt;
    }
    const auto seconds = std::chrono::duration<double>(m_samples.back().first - m_samples.front().first).count();
    if (seconds < 1) {
        return std::nullopt;
    }
    return double(m_samples.back().second - m_samples.front().second) / seconds;
}

} // namespace talmo
