#include "Speech/FormatConversion.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace talmo {

quint32 conversionCapacity(double inputRate, double targetRate, quint32 frameLength)
{
    // Rates up to 1 Hz and NaN count as 1, so that the division is safe.
    const double divisor = inputRate > 1.0 ? inputRate : 1.0;
    const double frames = targetRate / divisor * static_cast<double>(frameLength);
    constexpr double limit = 4294967296.0;
    if (!std::isfinite(frames) || !(frames > -1.0) || !(frames < limit)) {
        qFatal("audio conversion: %f frames do not fit in a buffer", frames);
    }
    const auto whole = static_cast<quint32>(std::max(frames, 0.0));
    if (whole > std::numeric_limits<quint32>::max() - conversionMargin) {
        qFatal("audio conversion: %u frames leave no room for the margin", whole);
    }
    return whole + conversionMargin;
}

std::shared_ptr<AudioBuffer> convertBuffer(const std::shared_ptr<const AudioBuffer> &buffer, AudioConverter &converter,
                                           const AudioFormat &targetFormat)
{
    const auto capacity =
        conversionCapacity(buffer->format().sampleRate, targetFormat.sampleRate, buffer->frameLength());
    auto output = AudioBuffer::make(targetFormat, capacity);
    if (!output) {
        return nullptr;
    }
    // Supplied exactly once per call. The end of the stream is never reported: the converter's state carries over.
    auto pending = buffer;
    std::optional<QString> error;
    converter.convert(*output, error, [&pending](ConverterInputStatus &status) {
        status = pending ? ConverterInputStatus::HaveData : ConverterInputStatus::NoDataNow;
        return std::exchange(pending, nullptr);
    });
    return error ? nullptr : output;
}

void handleTapBuffer(LazyAudioConverterBox &box, const AsyncStream<AnalyzerInput>::Continuation &continuation,
                     const std::shared_ptr<const AudioBuffer> &buffer)
{
    if (!box.cached) {
        box.cached = box.factory->make(buffer->format(), box.targetFormat);
    }
    std::shared_ptr<const AudioBuffer> chosen;
    if (box.cached) {
        chosen = convertBuffer(buffer, *box.cached, box.targetFormat);
    }
    continuation.yield({chosen ? chosen : buffer});
}

} // namespace talmo
