#pragma once

#include <QString>

namespace talmo {

/// Folds the results of one recording into its text: settled results are kept, the provisional tail is replaced.
class TranscriptAccumulator {
public:
    void apply(const QString &resultText, bool isFinal);

    /// Settled text and tail, joined by a space. Not trimmed.
    QString combinedText() const;

    QString finalizedText() const { return m_finalizedText; }
    QString volatileText() const { return m_volatileText; }

private:
    QString m_finalizedText;
    QString m_volatileText;
};

} // namespace talmo
