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
    /// Called for input while there is room for output. Sets the status, and returns a buffer only with HaveData.
    using InputCallback = std::function<Input(ConverterInputStatus &status)>;

    virtual ~AudioConverter() = default;

    /// Fills `output` with the converted input and sets its length. A failure is described in `error`.
    virtual void convert(AudioBuffer &output, std::optional<QString> &error, const InputCallback &input) = 0;
};

class AudioConverterFactory {
public:
    virtual ~AudioConverterFactory() = default;

    /// Null if the conversion is not supported. Any thread.
    virtual std::unique_ptr<AudioConverter> make(const AudioFormat &from, const AudioFormat &to) const = 0;
};

} // namespace talmo
