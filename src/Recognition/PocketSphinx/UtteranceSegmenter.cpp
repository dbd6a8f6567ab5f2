#include "Recognition/PocketSphinx/UtteranceSegmenter.h"

#include "Recognition/RecordingDecoder.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace talmo {

bool UtteranceSegmenter::endsHere(bool isInSpeech, int trailingSilence, std::size_t length)
{
    struct Limit {
        std::size_t length;
        int silence;
    };
    constexpr std::size_t second = RecordingDecoder::sampleRate;
    constexpr Limit limits[] = {{8 * second, 8}, {14 * second, 3}};
    const bool isPause = std::exchange(m_wasInSpeech, isInSpeech) && !isInSpeech;
    return isPause || std::any_of(std::begin(limits), std::end(limits), [&](const Limit &limit) {
               return length > limit.length && trailingSilence >= limit.silence;
           });
}

} // namespace talmo
