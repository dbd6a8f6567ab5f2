#pragma once

#include "Recognition/PocketSphinx/PocketSphinxDecoder.h"

#include <QString>

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>

namespace talmo {

/// Keeps one decoder for the next recording, which returns it when it ends. Any thread.
class PocketSphinxDecoderPool {
public:
    explicit PocketSphinxDecoderPool(QString modelFolder);

    /// The kept decoder if it has the current vocabulary and search, else a newly loaded one. Throws Error.
    std::unique_ptr<PocketSphinxDecoder> take();
    void giveBack(std::unique_ptr<PocketSphinxDecoder> decoder);
    /// Instead of giveBack(), for a decoder that is unusable.
    void discard(std::unique_ptr<PocketSphinxDecoder> decoder);
    /// Loads a decoder to keep, unless there is one or a recording will return one. Throws Error.
    void warmUp();
    /// The number of decoders loaded so far.
    int loadCount() const { return m_loadCount; }
    QString modelFolder() const { return m_modelFolder; }
    /// The vocabulary of decoders taken from now on.
    void setVocabulary(const PersonalVocabulary &vocabulary);
    /// Chooses the search of decoders taken from now on by how fast this one was. The pool does this with every decoder
    /// that is returned.
    void noteSpeed(const PocketSphinxDecoder &decoder);
    /// Frees the memory of the kept decoder.
    void unload();
    bool keepsOne() const;

private:
    const QString m_modelFolder;
    mutable std::mutex m_mutex;
    std::unique_ptr<PocketSphinxDecoder> m_kept;
    int m_takenCount = 0;
    std::atomic<int> m_loadCount = 0;
    PersonalVocabulary m_vocabulary;
    /// Meaningful once a decoder has been loaded.
    SearchWidth m_width = SearchWidth::Narrow;
};

} // namespace talmo
