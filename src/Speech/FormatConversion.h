#pragma once

#include "Base/AsyncStream.h"
#include "Input/Audio/AudioBuffer.h"
#include "Input/Audio/AudioConverter.h"
#include "Speech/SpeechPlatform.h"

#include <memory>

namespace talmo {

/// The one converter of a recording, made for its first buffer. Capture thread only.
struct LazyAudioConverterBox {
    std::shared_ptr<const AudioConverterFactory> factory;
    AudioFormat targetFormat;
    /// None before the first buffer, and none again after an attempt that failed.
    std::unique_ptr<AudioConverter> cached;
};

/// Room that every conversion has beyond the exact ratio.
inline constexpr quint32 conversionMargin = 1024;

/// Frames to reserve for converting `frameLength` frames from one rate to the other. A count that fits no 32-bit
/// buffer is a fatal error: no microphone delivers one.
quint32 conversionCapacity(double inputRate, double targetRate, quint32 frameLength);

/// None when the conversion could not be done.
std::shared_ptr<AudioBuffer> convertBuffer(const std::shared_ptr<const AudioBuffer> &buffer, AudioConverter &converter,
                                           const AudioFormat &targetFormat);

/// Converts a captured buffer and hands it to the analyzer; one that cannot be converted goes as it came, so that a
/// failure never stops the stream.
void handleTapBuffer(LazyAudioConverterBox &box, const AsyncStream<AnalyzerInput>::Continuation &continuation,
                     const std::shared_ptr<const AudioBuffer> &buffer);

} // namespace talmo
