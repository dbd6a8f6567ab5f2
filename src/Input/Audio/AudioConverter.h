#pragma once

#include "Input/Audio/AudioBuffer.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>

namespace talmo {

enum class ConverterInputStatus { HaveData = 0, NoDataNow = 1, EndOfStream = 2 };

/// Converts a stream of buffers to another format, keeping its state from one call to the next. Capture thread.
class AudioConverter {
public:
    using Input = std::shared_ptr<const AudioBuffer>;
    /// Asked for input as long as there is room for output; sets the status, and gives a buffer with HaveData only.
    using InputCallback = std::function<Input(ConverterInputStatus &status)>;

    virtual ~AudioConverter() = default;

    /// Fills `output` from what the callback gives and sets its length. A failure is described in `error`.
    virtual void convert(AudioBuffer &output, std::optional<QString> &error, const InputCallback &input) = 0;
};

class AudioConverterFactory {
public:
    virtual ~AudioConverterFactory() = default;

    /// None when there is no way from the one format to the other. Any thread.
    virtual std::unique_ptr<AudioConverter> make(const AudioFormat &from, const AudioFormat &to) const = 0;
};

} // namespace talmo
