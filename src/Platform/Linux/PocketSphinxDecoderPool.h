#pragma once

#include "Platform/Linux/PocketSphinxDecoder.h"

#include <QString>

#include <memory>
#include <mutex>

namespace talmo {

/// Keeps one decoder for the next recording. Any thread.
class PocketSphinxDecoderPool {
public:
    explicit PocketSphinxDecoderPool(QString modelFolder);

    /// The one that is kept, if it knows the right words, or else a freshly loaded one. Throws Error.
    std::unique_ptr<PocketSphinxDecoder> take();
    void giveBack(std::unique_ptr<PocketSphinxDecoder> decoder);
    QString modelFolder() const { return m_modelFolder; }
    /// What decoders are to know from the next one that is taken on.
    void setVocabulary(const PersonalVocabulary &vocabulary);
    /// Gives the memory of the one that is kept back.
    void unload();
    bool keepsOne() const;

private:
    const QString m_modelFolder;
    mutable std::mutex m_mutex;
    std::unique_ptr<PocketSphinxDecoder> m_kept;
    PersonalVocabulary m_vocabulary;
};

} // namespace talmo
