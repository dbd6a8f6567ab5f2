#pragma once

#include "Recognition/Sherpa/SherpaLibrary.h"

#include <QTemporaryFile>

#include <memory>

namespace talmo {

/// What a neural model needs for hot words: the pieces that its words consist of, and the probability of each. Some
/// models come with these as "bpe.vocab"; for the others they are estimated from the order of their tokens, which are
/// sorted by frequency. Blocks on the disk.
class HotWordVocabulary {
public:
    explicit HotWordVocabulary(const SherpaModel &model);

    /// False if the model does not support hot words.
    bool isUsable() const { return m_isUsable; }
    /// The file with the pieces, which lives as long as this object; empty if none is needed.
    QString path() const { return m_path; }
    bool hasCapitals() const { return m_hasCapitals; }

private:
    void guess(const QByteArray &tokens);

    bool m_isUsable = false;
    bool m_hasCapitals = false;
    QString m_path;
    std::unique_ptr<QTemporaryFile> m_guessed;
};

} // namespace talmo
