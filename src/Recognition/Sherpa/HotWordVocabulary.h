#pragma once

#include "Recognition/Sherpa/SherpaModel.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryFile>

#include <memory>

namespace talmo {

/// What a neural model needs for hot words: the pieces that its words consist of, and the probability of each. Some
/// models come with these as "bpe.vocab"; for the others they are estimated from the order of their tokens, which are
/// sorted by frequency. Blocks on the disk.
class HotWordVocabulary {
public:
    /// Throws Error.
    explicit HotWordVocabulary(const SherpaModel &model);

    /// False if the model does not support hot words.
    bool isUsable() const { return m_isUsable; }
    /// The file with the pieces, which lives as long as this object; empty if none is needed.
    QString path() const { return m_path; }

    /// The words in the form in which the library takes them; empty if none of them can be favoured.
    static QByteArray listOf(const QStringList &words);

private:
    void guess(const QByteArray &tokens);

    bool m_isUsable = false;
    QString m_path;
    std::unique_ptr<QTemporaryFile> m_guessed;
};

} // namespace talmo
