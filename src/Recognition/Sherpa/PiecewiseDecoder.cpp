#include "Recognition/Sherpa/PiecewiseDecoder.h"

#include "Recognition/Signal/Samples.h"

#include <utility>

namespace talmo {

PiecewiseDecoder::PiecewiseDecoder(std::shared_ptr<OfflineRecogniser> recogniser,
                                   std::shared_ptr<VoiceActivity> activity, SherpaRecogniser::Recording recording)
    : m_recogniser(std::move(recogniser)),
      m_recording(std::move(recording)),
      m_pieces(std::move(activity), [this](const std::vector<float> &piece) { recognise(piece); })
{
}

void PiecewiseDecoder::process(std::span<const std::int16_t> samples)
{
    m_pieces.accept(scaled(samples));
}

void PiecewiseDecoder::finish()
{
    m_pieces.finish();
}

void PiecewiseDecoder::recognise(const std::vector<float> &piece)
{
    const QString text = m_recording.text.of(m_recogniser->transcribe(piece, m_recording.language));
    if (!text.isEmpty()) {
        m_recording.publish({text, true});
    }
}

} // namespace talmo
