#pragma once

#include <cstddef>

namespace talmo {

/// Decides where an utterance ends, so that little is left to do at the end of a recording: at a pause, and in a long
/// utterance at ever shorter ones, since the cost of finishing an utterance grows with its length.
class UtteranceSegmenter {
public:
    /// True if the utterance ends here. `trailingSilence`: in hundredths of a second. `length`: in samples at 16 kHz.
    bool endsHere(bool isInSpeech, int trailingSilence, std::size_t length);

private:
    bool m_wasInSpeech = false;
};

} // namespace talmo
