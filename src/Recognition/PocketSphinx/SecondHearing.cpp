#include "Recognition/PocketSphinx/SecondHearing.h"

namespace talmo {

void SecondHearing::advance(std::span<const std::int16_t> utterance, std::size_t count)
{
    if (!std::exchange(m_hasBegun, true)) {
        m_decoder->beginUtterance();
    }
    const auto next = std::min(count, behind(utterance.size()));
    m_decoder->process(utterance.subspan(m_position, next));
    m_position += next;
}

} // namespace talmo
