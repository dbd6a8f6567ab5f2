#pragma once

#include "Recognition/PocketSphinx/PocketSphinxDecoder.h"

#include <QString>

#include <atomic>
#include <memory>
#include <mutex>

namespace talmo {

/// Keeps one decoder for the next recording, which gives it back at its end. Any thread.
class PocketSphinxDecoderPool {
public:
    explicit PocketSphinxDecoderPool(QString modelFolder);

    /// The one that is kept, if it knows the right words, or else a freshly loaded one. Throws Error.
    std::unique_ptr<PocketSphinxDecoder> take();
    void giveBack(std::unique_ptr<PocketSphinxDecoder> decoder);
    /// Instead of giveBack(), for one that is no longer fit.
    void discard(std::unique_ptr<PocketSphinxDecoder> decoder);
    /// Loads the one to keep, unless there is one or a recording is about to give one back. Throws Error.
    void warmUp();
    /// How many decoders have been loaded so far.
    int loadCount() const { return m_loadCount; }
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
    int m_takenCount = 0;
    std::atomic<int> m_loadCount = 0;
    PersonalVocabulary m_vocabulary;
};

} // namespace talmo
