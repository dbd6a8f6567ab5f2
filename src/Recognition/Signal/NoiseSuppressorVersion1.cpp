#include "Recognition/Signal/NoiseSuppressor.h"

#include "Base/Error.h"
#include "Recognition/RecognitionFailure.h"

#include <modules/audio_processing/include/audio_processing.h>

#include <QString>

namespace talmo {

struct NoiseSuppressor::Library {
    rtc::scoped_refptr<webrtc::AudioProcessing> processing{webrtc::AudioProcessingBuilder().Create()};
};

NoiseSuppressor::NoiseSuppressor()
    : m_library(std::make_unique<Library>())
{
    webrtc::AudioProcessing::Config config;
    config.noise_suppression.enabled = true;
    // The next higher level removed more words along with the noise; lower ones left more noise.
    config.noise_suppression.level = webrtc::AudioProcessing::Config::NoiseSuppression::kHigh;
    m_library->processing->ApplyConfig(config);
}

NoiseSuppressor::~NoiseSuppressor() = default;

void NoiseSuppressor::process(const std::int16_t *frame, std::int16_t *reduced)
{
    const webrtc::StreamConfig format(sampleRate, 1);
    const int result = m_library->processing->ProcessStream(frame, format, format, reduced);
    if (result != webrtc::AudioProcessing::kNoError) {
        throw RecognitionFailure(QStringLiteral("noise reduction: error %1").arg(result));
    }
}

} // namespace talmo
