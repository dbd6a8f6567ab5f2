#pragma once

#include "Recognition/RecordingDecoder.h"

#include <QString>

namespace talmo {

/// Publishes the text of one utterance after another: volatile while it grows, final at its end.
class UtterancePublisher {
public:
    explicit UtterancePublisher(RecordingDecoder::Publish publish);

    /// Publishes nothing if the text is empty or unchanged.
    void publishVolatile(const QString &text);
    /// An empty text withdraws the volatile text.
    void publishFinal(const QString &text);

    bool hasDecodedWords() const { return m_hasDecodedWords; }

private:
    RecordingDecoder::Publish m_publish;
    QString m_volatileText;
    bool m_hasDecodedWords = false;
};

} // namespace talmo
