#include "Recognition/Signal/NoiseReduction.h"

#include "Base/Error.h"

#include <webrtc/modules/audio_processing/include/audio_processing.h>
#include <webrtc/modules/interface/module_common_types.h>

#include <QString>

#include <algorithm>

namespace talmo {

namespace {

constexpr int sampleRate = 16000;
constexpr std::size_t frameLength = sampleRate / 100;

void require(int result)
{
    if (result != webrtc::AudioProcessing::kNoError) {
        throw Error(QStringLiteral("Noise reduction failed (error %1).").arg(result));
    }
}

} // namespace

struct NoiseReduction::Filter {
    std::unique_ptr<webrtc::AudioProcessing> processing{webrtc::AudioProcessing::Create()};
    webrtc::AudioFrame frame;
};

NoiseReduction::NoiseReduction()
    : m_filter(std::make_unique<Filter>())
{
    auto *suppression = m_filter->processing->noise_suppression();
    // The next higher level removed more words along with the noise; lower ones left more noise.
    require(suppression->set_level(webrtc::NoiseSuppression::kHigh));
    require(suppression->Enable(true));
}

NoiseReduction::~NoiseReduction() = default;

std::vector<std::int16_t> NoiseReduction::reduce(std::span<const std::int16_t> samples)
{
    m_rest.insert(m_rest.end(), samples.begin(), samples.end());
    std::vector<std::int16_t> reduced;
    reduced.reserve(m_rest.size());
    auto &frame = m_filter->frame;
    std::size_t done = 0;
    for (; m_rest.size() - done >= frameLength; done += frameLength) {
        frame.UpdateFrame(0, 0, m_rest.data() + done, frameLength, sampleRate, webrtc::AudioFrame::kNormalSpeech,
                          webrtc::AudioFrame::kVadUnknown, 1);
        require(m_filter->processing->ProcessStream(&frame));
        reduced.insert(reduced.end(), frame.data_, frame.data_ + frameLength);
    }
    m_rest.erase(m_rest.begin(), m_rest.begin() + static_cast<std::ptrdiff_t>(done));
    return reduced;
}

std::vector<std::int16_t> NoiseReduction::flush()
{
    if (m_rest.empty()) {
        return {};
    }
    return reduce(std::vector<std::int16_t>(frameLength - m_rest.size()));
}

void NoiseReduction::measure(std::span<const std::int16_t> samples)
{
    m_level.add(samples);
    // Decibels. In rooms full of echoes and other voices, the filter takes more of the voice than it gives.
    constexpr double muchNoise = 20;
    constexpr double muchSteadyNoise = 30;
    // The state is kept while the level is between the limit and this much above, so that it does not change with every
    // sentence.
    constexpr double hysteresis = 4;
    const double limit = m_level.isSteady() ? muchSteadyNoise : muchNoise;
    m_isWorthwhile = m_level.voiceAboveNoise() < limit + (m_isWorthwhile ? hysteresis : 0);
}

} // namespace talmo
