#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace talmo {

/// The same samples between -1 and 1.
inline std::vector<float> scaled(std::span<const std::int16_t> samples)
{
    constexpr float loudest = 32768;
    std::vector<float> result(samples.begin(), samples.end());
    for (float &sample : result) {
        sample /= loudest;
    }
    return result;
}

} // namespace talmo
