#pragma once

#include <QString>
#include <QStringList>

namespace talmo {

/// A neural model on disk, described as the library needs it.
struct SherpaModel {
    enum class Kind {
        Transducer,
        ZipformerCtc,
        NemoCtc,
        OfflineTransducer,
        OfflineNemoCtc,
        Whisper,
        Moonshine,
        SenseVoice,
        Canary
    };

    QString folder;
    Kind kind = Kind::Transducer;
    /// File names within the folder; empty if the kind does not need them.
    QString encoder;
    QString decoder;
    QString joiner;
    QString model;
    QString tokens;
    /// Of a Moonshine model of the first generation, whose `decoder` is the one without a cache.
    QString preprocessor;
    QString cachedDecoder;
    /// The languages it recognises, such as "en"; never empty.
    QStringList languages;
    /// Those that can be selected; the library aborts on any other.
    QStringList toldLanguages;
    /// How words are split into its tokens, "bpe" or "cjkchar", if it supports hot words; else empty.
    QString hotWordUnit;
    /// A streaming model from NeMo: it needs a moment of silence before the first word, loses what follows a reset, and
    /// takes no hot words.
    bool isNemo = false;
    /// It can only write capitals, which is not how people write.
    bool isAllCapitals = false;

    /// Examines the files in the folder as far as possible without loading them, because the library aborts on some
    /// invalid models. Throws Error.
    static SherpaModel examine(const QString &folder);
    /// Whether it recognises sound as it arrives, rather than a whole utterance at once.
    bool isStreaming() const;
    bool takesHotWords() const;
    /// Whether all its files still exist.
    bool isComplete() const;
};

} // namespace talmo
