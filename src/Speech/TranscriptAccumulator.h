#pragma once

#include <QString>

namespace talmo {

/// Folds the results of one recording into its text: final results are kept, the volatile tail is replaced.
class TranscriptAccumulator {
public:
    void apply(const QString &resultText, bool isFinal);

    /// Final text and volatile tail, joined by a space. Not trimmed.
    QString combinedText() const;

    QString finalizedText() const { return m_finalizedText; }
    QString volatileText() const { return m_volatileText; }

private:
    QString m_finalizedText;
    QString m_volatileText;
};

} // namespace talmo
