#include "Input/Audio/SpeexAudioConverter.h"

#include <speex/speex_resampler.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <span>

namespace talmo {

namespace {

constexpr int resamplerQuality = 8;
constexpr double highestRate = 768000;
/// Beyond this ratio the resampler's filter grows to megabytes.
constexpr double largestRatio = 64;

/// Beyond any real recording, and low enough for sums of channels not to overflow.
constexpr float largestSample = 1024;

struct ResamplerDeleter {
    void operator()(SpeexResamplerState *state) const { speex_resampler_destroy(state); }
};
using Resampler = std::unique_ptr<SpeexResamplerState, ResamplerDeleter>;

template <typename Sample>
float sampleAt(const char *bytes, std::size_t index)
{
    Sample sample;
    std::memcpy(&sample, bytes + index * sizeof(Sample), sizeof(Sample));
    if constexpr (std::is_floating_point_v<Sample>) {
        return std::isfinite(sample) ? std::clamp(sample, -largestSample, largestSample) : 0.0F;
    } else {
        return static_cast<float>(sample) / 32768.0F;
    }
}

/// In frames. The sound is mixed, resampled and rounded in pieces that stay in the processor's cache, so that a buffer
/// is read and written once.
constexpr std::size_t pieceLength = 512;

/// The frames from `first` on, as many as there is room for.
template <typename Sample>
void mixDown(const AudioBuffer &buffer, std::size_t first, std::span<float> mono)
{
    const std::size_t channels = buffer.format().channelCount;
    for (std::size_t frame = 0; frame < mono.size(); ++frame) {
        float sum = 0;
        for (std::size_t channel = 0; channel < channels; ++channel) {
            sum += sampleAt<Sample>(buffer.data(), (first + frame) * channels + channel);
        }
        mono[frame] = sum / static_cast<float>(channels);
    }
}

void writeSamples(std::span<const float> samples, AudioBuffer &output, quint32 offset)
{
    if (output.format().sampleType == SampleType::Float32) {
        std::memcpy(output.data() + std::size_t(offset) * sizeof(float), samples.data(), samples.size_bytes());
        return;
    }
    for (std::size_t index = 0; index < samples.size(); ++index) {
        const float scaled = std::clamp(samples[index] * 32768.0F, -32768.0F, 32767.0F);
        const auto value = static_cast<qint16>(std::lrintf(scaled));
        std::memcpy(output.data() + (offset + index) * sizeof(value), &value, sizeof(value));
    }
}

class SpeexAudioConverter final : public AudioConverter {
public:
    SpeexAudioConverter(const AudioFormat &from, Resampler resampler)
        : m_from(from),
          m_resampler(std::move(resampler))
    {
    }

    void convert(AudioBuffer &output, std::optional<QString> &error, const InputCallback &input) override
    {
        quint32 written = 0;
        while (true) {
            ConverterInputStatus status = ConverterInputStatus::NoDataNow;
            const Input buffer = input(status);
            if (status != ConverterInputStatus::HaveData || !buffer) {
                break;
            }
            if (buffer->format() != m_from) {
                error = QStringLiteral("The microphone's format changed during the recording.");
                break;
            }
            if (!resample(*buffer, output, written)) {
                error = QStringLiteral("The resampler failed.");
                break;
            }
        }
        output.setFrameLength(written);
    }

private:
    bool resample(const AudioBuffer &buffer, AudioBuffer &output, quint32 &written)
    {
        std::array<float, pieceLength> mono;
        for (std::size_t first = 0; first < buffer.frameLength(); first += pieceLength) {
            const auto piece = std::span(mono).first(std::min(pieceLength, buffer.frameLength() - first));
            if (m_from.sampleType == SampleType::Float32) {
                mixDown<float>(buffer, first, piece);
            } else {
                mixDown<qint16>(buffer, first, piece);
            }
            if (!resample(piece, output, written)) {
                return false;
            }
        }
        return true;
    }

    bool resample(std::span<const float> mono, AudioBuffer &output, quint32 &written)
    {
        std::array<float, pieceLength> resampled;
        while (!mono.empty()) {
            auto taken = static_cast<spx_uint32_t>(mono.size());
            auto made =
                static_cast<spx_uint32_t>(std::min<std::size_t>(resampled.size(), output.frameCapacity() - written));
            const int result =
                speex_resampler_process_float(m_resampler.get(), 0, mono.data(), &taken, resampled.data(), &made);
            if (result != RESAMPLER_ERR_SUCCESS || (taken == 0 && made == 0)) {
                return false;
            }
            writeSamples(std::span(resampled).first(made), output, written);
            written += made;
            mono = mono.subspan(taken);
        }
        return true;
    }

    AudioFormat m_from;
    Resampler m_resampler;
};

bool isUsableRate(double rate)
{
    return rate >= 1 && rate <= highestRate;
}

} // namespace

std::unique_ptr<AudioConverter> SpeexAudioConverterFactory::make(const AudioFormat &from, const AudioFormat &to) const
{
    if (!isUsableRate(from.sampleRate) || !isUsableRate(to.sampleRate) || from.channelCount == 0 ||
        to.channelCount != 1 ||
        std::max(from.sampleRate / to.sampleRate, to.sampleRate / from.sampleRate) > largestRatio) {
        return nullptr;
    }
    int error = RESAMPLER_ERR_SUCCESS;
    Resampler resampler(speex_resampler_init(1, static_cast<spx_uint32_t>(std::lround(from.sampleRate)),
                                             static_cast<spx_uint32_t>(std::lround(to.sampleRate)), resamplerQuality,
                                             &error));
    if (!resampler || error != RESAMPLER_ERR_SUCCESS) {
        return nullptr;
    }
    return std::make_unique<SpeexAudioConverter>(from, std::move(resampler));
}

} // namespace talmo
