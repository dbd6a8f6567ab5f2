#pragma once

#include "Input/Audio/AudioConverter.h"

namespace talmo {

/// Resamples with speexdsp: mixes all channels down to one, then converts the rate and the sample type. It delays the
/// audio by a few milliseconds, so its end needs a little trailing silence.
class SpeexAudioConverterFactory final : public AudioConverterFactory {
public:
    std::unique_ptr<AudioConverter> make(const AudioFormat &from, const AudioFormat &to) const override;
};

} // namespace talmo
