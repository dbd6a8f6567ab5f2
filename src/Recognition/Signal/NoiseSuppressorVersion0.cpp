#include "Recognition/Signal/NoiseSuppressor.h"

#include "Base/Error.h"
#include "Recognition/RecognitionFailure.h"

#include <webrtc/modules/audio_processing/include/audio_processing.h>
#include <webrtc/modules/interface/module_common_types.h>

#include <QString>

#include <algorithm>

namespace talmo {

namespace {

void require(int result)
{
    if (result != webrtc::AudioProcessing::kNoError) {
        throw RecognitionFailure(QStringLiteral("noise reduction: error %1").arg(result));
    }
}

} // namespace

struct NoiseSuppressor::Library {
    std::unique_ptr<webrtc::AudioProcessing> processing{webrtc::AudioProcessing::Create()};
    webrtc::AudioFrame frame;
};

NoiseSuppressor::NoiseSuppressor()
    : m_library(std::make_unique<Library>())
{
    auto *suppression = m_library->processing->noise_suppression();
    // The next higher level removed more words along with the noise; lower ones left more noise.
    require(suppression->set_level(webrtc::NoiseSuppression::kHigh));
    require(suppression->Enable(true));
}

NoiseSuppressor::~NoiseSuppressor() = default;

void NoiseSuppressor::process(const std::int16_t *frame, std::int16_t *reduced)
{
    auto &buffer = m_library->frame;
    buffer.UpdateFrame(0, 0, frame, frameLength, sampleRate, webrtc::AudioFrame::kNormalSpeech,
                       webrtc::AudioFrame::kVadUnknown, 1);
    require(m_library->processing->ProcessStream(&buffer));
    std::copy_n(buffer.data_, frameLength, reduced);
}

} // namespace talmo
