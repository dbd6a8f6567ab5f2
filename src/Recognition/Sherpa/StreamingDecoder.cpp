#include "Recognition/Sherpa/StreamingDecoder.h"

#include "Recognition/Signal/Samples.h"

#include <utility>
#include <vector>

namespace talmo {

StreamingDecoder::StreamingDecoder(std::shared_ptr<StreamingRecogniser> recogniser,
                                   SherpaRecogniser::Recording recording)
    : m_recogniser(std::move(recogniser)),
      m_recording(std::move(recording)),
      m_stream(*m_recogniser, m_recording.hotWords, m_recording.language)
{
    m_stream.accept(std::vector<float>(m_recogniser->lead()));
}

void StreamingDecoder::process(std::span<const std::int16_t> samples)
{
    m_stream.accept(scaled(samples));
    m_stream.decode();
    const QString text = readable();
    if (m_stream.isEndpoint()) {
        publishFinal(text);
        m_stream.reset();
    } else if (!text.isEmpty() && text != m_volatileText) {
        m_volatileText = text;
        m_recording.publish({text, false});
    }
}

void StreamingDecoder::finish()
{
    m_stream.accept(std::vector<float>(m_recogniser->tail()));
    m_stream.inputFinished();
    m_stream.decode();
    publishFinal(readable());
}

QString StreamingDecoder::readable()
{
    if (const QString raw = m_stream.text(); raw != m_rawText) {
        m_rawText = raw;
        m_readableText = m_recording.text.of(raw);
    }
    return m_readableText;
}

void StreamingDecoder::publishFinal(const QString &text)
{
    if (!text.isEmpty()) {
        m_recording.publish({text, true});
    } else if (!m_volatileText.isEmpty()) {
        m_recording.publish({QString(), false});
    }
    m_volatileText.clear();
}

} // namespace talmo
