#pragma once

#include "Base/AsyncStream.h"
#include "Input/Audio/AudioBuffer.h"
#include "Input/Audio/AudioConverter.h"
#include "Speech/SpeechPlatform.h"

#include <memory>

namespace talmo {

/// A recording's converter, created for its first buffer. Capture thread only.
struct LazyAudioConverterBox {
    std::shared_ptr<const AudioConverterFactory> factory;
    AudioFormat targetFormat;
    /// Null before the first buffer, and after a failed attempt to create it.
    std::unique_ptr<AudioConverter> cached;
};

/// Frames reserved beyond the exact ratio.
inline constexpr quint32 conversionMargin = 1024;

/// Frames to reserve for converting `frameLength` frames from one rate to the other. A count beyond 32 bits is a fatal
/// error: no microphone delivers one.
quint32 conversionCapacity(double inputRate, double targetRate, quint32 frameLength);

/// Null if the conversion failed.
std::shared_ptr<AudioBuffer> convertBuffer(const std::shared_ptr<const AudioBuffer> &buffer, AudioConverter &converter,
                                           const AudioFormat &targetFormat);

/// Converts a captured buffer and passes it to the analyzer. A buffer that cannot be converted is passed on unchanged,
/// so that a failure never stops the stream.
void handleTapBuffer(LazyAudioConverterBox &box, const AsyncStream<AnalyzerInput>::Continuation &continuation,
                     const std::shared_ptr<const AudioBuffer> &buffer);

} // namespace talmo
