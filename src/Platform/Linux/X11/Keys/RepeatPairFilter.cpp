#include "Platform/Linux/X11/Keys/RepeatPairFilter.h"

#include <utility>

namespace talmo {

RepeatPairFilter::RepeatPairFilter(std::function<bool(std::uint8_t)> isWatched)
    : m_isWatched(std::move(isWatched))
{
}

std::optional<RawKey> RepeatPairFilter::take(bool hasTimedOut)
{
    while (!m_queue.empty()) {
        const RawKey key = m_queue.front();
        if (!key.isDown && m_isWatched(key.keyCode)) {
            if (m_queue.size() > 1 && isPair(key, m_queue[1])) {
                m_repeatingDevices.insert(key.sourceDevice);
                m_queue.pop_front();
                m_queue.pop_front();
                continue;
            }
            if (m_queue.size() == 1 && !hasTimedOut && m_repeatingDevices.contains(key.sourceDevice)) {
                return std::nullopt;
            }
        }
        m_queue.pop_front();
        return key;
    }
    return std::nullopt;
}

bool RepeatPairFilter::isPair(const RawKey &release, const RawKey &press) const
{
    return press.isDown && press.keyCode == release.keyCode && press.sourceDevice == release.sourceDevice &&
           press.time - release.time <= pairGap;
}

} // namespace talmo
