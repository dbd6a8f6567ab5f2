#include "Recognition/Sherpa/PiecewiseDecoder.h"

#include "Recognition/Signal/Samples.h"

#include <chrono>
#include <utility>

namespace talmo {

PiecewiseDecoder::PiecewiseDecoder(std::shared_ptr<OfflineRecogniser> recogniser,
                                   std::shared_ptr<VoiceActivity> activity, SherpaRecogniser::Recording recording)
    : m_recogniser(std::move(recogniser)),
      m_recording(std::move(recording)),
      m_pieces(std::move(activity), {[this](const auto &piece, bool isSeen) { take(piece, isSeen); },
                                     [this](const auto &soFar) { return look(soFar); }})
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

void PiecewiseDecoder::take(const std::vector<float> &piece, bool isSeen)
{
    const QString text = isSeen ? m_lookText : recognised(piece);
    const bool isShown = std::exchange(m_isShown, false);
    m_lookText.clear();
    if (!text.isEmpty()) {
        m_recording.publish({text, true});
    } else if (isShown) {
        m_recording.publish({QString(), false});
    }
}

double PiecewiseDecoder::look(const std::vector<float> &soFar)
{
    const auto start = std::chrono::steady_clock::now();
    m_lookText = recognised(soFar);
    const std::chrono::duration<double> duration = std::chrono::steady_clock::now() - start;
    if (m_isShown || !m_lookText.isEmpty()) {
        m_recording.publish({m_lookText, false});
        m_isShown = !m_lookText.isEmpty();
    }
    return duration.count();
}

QString PiecewiseDecoder::recognised(const std::vector<float> &samples) const
{
    return m_recording.text.of(m_recogniser->transcribe(samples, m_recording.language));
}

} // namespace talmo
