#pragma once

#include "Speech/SpeechPlatform.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>

namespace talmo {

/// An engine's work on one recording. On the recogniser's thread; all of it may throw Error, after which it is only
/// destroyed.
class RecordingDecoder {
public:
    static constexpr int sampleRate = 16000;
    /// The results, in the order in which they are to be merged.
    using Publish = std::function<void(SpeechResult)>;

    virtual ~RecordingDecoder() = default;

    /// One channel of sound.
    virtual void process(std::span<const std::int16_t> samples) = 0;
    /// The audio has ended: publishes the rest.
    virtual void finish() = 0;
};

/// Makes the decoder of a recording, loading the model if need be. Throws Error.
using MakeRecordingDecoder = std::function<std::unique_ptr<RecordingDecoder>(RecordingDecoder::Publish)>;

} // namespace talmo
