#include "Platform/Linux/X11/Keys/PostedKeys.h"

#include <algorithm>

namespace talmo {

namespace {

/// The server may swallow a posted key, such as the release of one that is up. Such an entry must not hide a later key
/// of the user's.
constexpr auto longestWay = std::chrono::seconds(1);

} // namespace

void PostedKeys::expect(std::uint8_t keyCode, bool isDown)
{
    const std::lock_guard lock(m_mutex);
    m_expected.push_back({keyCode, isDown, std::chrono::steady_clock::now()});
}

bool PostedKeys::take(std::uint8_t keyCode, bool isDown)
{
    const std::lock_guard lock(m_mutex);
    const auto oldest = std::chrono::steady_clock::now() - longestWay;
    std::erase_if(m_expected, [oldest](const Key &key) { return key.posted < oldest; });
    const auto found = std::find_if(m_expected.begin(), m_expected.end(), [keyCode, isDown](const Key &key) {
        return key.keyCode == keyCode && key.isDown == isDown;
    });
    if (found == m_expected.end()) {
        return false;
    }
    m_expected.erase(found);
    return true;
}

} // namespace talmo
