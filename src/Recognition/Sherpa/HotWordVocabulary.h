#pragma once

#include "Recognition/Sherpa/SherpaLibrary.h"

#include <QTemporaryFile>

#include <memory>

namespace talmo {

/// What a neural model must be given to be told words to listen for: the pieces that its words are made of, and how
/// likely each is. Some models bring that as "bpe.vocab"; for the others it is guessed from the order of their tokens,
/// which are sorted that way. Waits for the disk.
class HotWordVocabulary {
public:
    explicit HotWordVocabulary(const SherpaModel &model);

    /// False where the model cannot be told words.
    bool isUsable() const { return m_isUsable; }
    /// The file with the pieces, which lives as long as this; empty where none is needed.
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
