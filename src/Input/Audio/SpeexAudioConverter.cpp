#include "Input/Audio/SpeexAudioConverter.h"

#include <speex/speex_resampler.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

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

template <typename Sample>
void mixDown(const AudioBuffer &buffer, std::vector<float> &mono)
{
    const std::size_t channels = buffer.format().channelCount;
    mono.resize(buffer.frameLength());
    for (std::size_t frame = 0; frame < mono.size(); ++frame) {
        float sum = 0;
        for (std::size_t channel = 0; channel < channels; ++channel) {
            sum += sampleAt<Sample>(buffer.data(), frame * channels + channel);
        }
        mono[frame] = sum / static_cast<float>(channels);
    }
}

void writeSamples(const std::vector<float> &samples, std::size_t count, AudioBuffer &output, quint32 offset)
{
    if (output.format().sampleType == SampleType::Float32) {
        std::memcpy(output.data() + std::size_t(offset) * sizeof(float), samples.data(), count * sizeof(float));
        return;
    }
    for (std::size_t index = 0; index < count; ++index) {
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
        if (m_from.sampleType == SampleType::Float32) {
            mixDown<float>(buffer, m_mono);
        } else {
            mixDown<qint16>(buffer, m_mono);
        }
        m_resampled.resize(output.frameCapacity() - written);
        auto inputLength = static_cast<spx_uint32_t>(m_mono.size());
        auto outputLength = static_cast<spx_uint32_t>(m_resampled.size());
        const int result = speex_resampler_process_float(m_resampler.get(), 0, m_mono.data(), &inputLength,
                                                         m_resampled.data(), &outputLength);
        if (result != RESAMPLER_ERR_SUCCESS || inputLength != m_mono.size()) {
            return false;
        }
        writeSamples(m_resampled, outputLength, output, written);
        written += outputLength;
        return true;
    }

    AudioFormat m_from;
    Resampler m_resampler;
    // Reused, so that the capture thread hardly allocates.
    std::vector<float> m_mono;
    std::vector<float> m_resampled;
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
