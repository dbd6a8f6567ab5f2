#pragma once

#include "Recognition/PocketSphinx/PocketSphinxDecoder.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>

namespace talmo {

/// Recognises an utterance again from its beginning while it is still being spoken, once more is known about the
/// microphone or the noise. Works in slices, so that new audio is not kept waiting. Not thread-safe.
class SecondHearing {
public:
    /// `decoder`: calibrated, between utterances.
    explicit SecondHearing(std::unique_ptr<PocketSphinxDecoder> decoder)
        : m_decoder(std::move(decoder))
    {
    }

    /// Recognises no more than `count` further samples of the utterance, which has grown since the last call. Throws
    /// Error.
    void advance(std::span<const std::int16_t> utterance, std::size_t count);
    /// The number of samples still to be recognised in an utterance of this length.
    std::size_t behind(std::size_t length) const { return length - std::min(length, m_position); }

    /// The decoder, within the utterance if that was advanced; nothing else may be called afterwards.
    std::unique_ptr<PocketSphinxDecoder> release() { return std::move(m_decoder); }

private:
    std::unique_ptr<PocketSphinxDecoder> m_decoder;
    bool m_hasBegun = false;
    std::size_t m_position = 0;
};

} // namespace talmo
