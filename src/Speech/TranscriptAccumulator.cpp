#include "Speech/TranscriptAccumulator.h"

namespace talmo {

void TranscriptAccumulator::apply(const QString &resultText, bool isFinal)
{
    if (!isFinal) {
        m_volatileText = resultText;
        return;
    }
    // Results are not trimmed here; blanks at the joins are removed by the final trim and the formatting.
    if (!m_finalizedText.isEmpty()) {
        m_finalizedText += QLatin1Char(' ');
    }
    m_finalizedText += resultText;
    m_volatileText.clear();
}

QString TranscriptAccumulator::combinedText() const
{
    if (m_finalizedText.isEmpty() || m_volatileText.isEmpty()) {
        return m_finalizedText + m_volatileText;
    }
    return m_finalizedText + QLatin1Char(' ') + m_volatileText;
}

} // namespace talmo
