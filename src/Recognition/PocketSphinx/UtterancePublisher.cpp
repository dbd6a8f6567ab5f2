#include "Recognition/PocketSphinx/UtterancePublisher.h"

#include <utility>

namespace talmo {

UtterancePublisher::UtterancePublisher(RecordingDecoder::Publish publish)
    : m_publish(std::move(publish))
{
}

void UtterancePublisher::publishVolatile(const QString &text)
{
    if (!text.isEmpty() && text != m_volatileText) {
        m_volatileText = text;
        m_publish({text, false});
    }
}

void UtterancePublisher::publishFinal(const QString &text)
{
    if (!text.isEmpty()) {
        m_hasDecodedWords = true;
        m_publish({text, true});
    } else if (!m_volatileText.isEmpty()) {
        m_publish({QString(), false});
    }
    m_volatileText.clear();
}

} // namespace talmo
