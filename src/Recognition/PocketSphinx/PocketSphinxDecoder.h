#pragma once

#include "Recognition/Text/Pronunciation.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

struct ps_decoder_s;

namespace talmo {

/// One loaded model of the embedded recogniser, about 100 MB. It keeps what it learnt about the microphone from one
/// recording to the next. Not thread-safe.
class PocketSphinxDecoder {
public:
    static constexpr int sampleRate = 16000;
    /// The average sound of a microphone and the voice before it, by which the recogniser corrects what it hears.
    using CepstralMean = QList<float>;

    /// Takes a quarter of a second. Throws Error when the model cannot be loaded.
    static std::unique_ptr<PocketSphinxDecoder> load(const QString &modelFolder,
                                                     const PersonalVocabulary &vocabulary = {});
    static bool isModelInstalled(const QString &modelFolder);

    ~PocketSphinxDecoder();
    PocketSphinxDecoder(const PocketSphinxDecoder &) = delete;
    PocketSphinxDecoder &operator=(const PocketSphinxDecoder &) = delete;

    /// All of these throw Error when the decoder refuses.
    void beginUtterance();
    void process(std::span<const std::int16_t> samples);
    void endUtterance();
    /// A whole utterance at once, with the sound of the microphone taken from all of it: slower and, with people rather
    /// than machines speaking, better. What was learnt about the microphone before stays. Between utterances.
    void processWhole(std::span<const std::int16_t> samples);

    /// Whether somebody was speaking at the end of what was processed; turns false half a second after the last word.
    bool isInSpeech() const;
    /// How long nothing has been said at the end of the words so far, in frames of a hundredth of a second.
    int trailingSilence() const;
    /// The words so far, or at the end, spelled as the user spells them; empty when there are none.
    QString hypothesis() const;

    CepstralMean cepstralMean() const;
    /// False when it is none of this model's.
    bool setCepstralMean(const CepstralMean &mean);
    /// Learns the microphone's sound from the beginning of a recording; false when it holds too little speech. Between
    /// utterances.
    bool learnFrom(std::span<const std::int16_t> samples);

    const PersonalVocabulary &vocabulary() const { return m_vocabulary; }

private:
    explicit PocketSphinxDecoder(ps_decoder_s *decoder);

    struct HeardWord;
    void addVocabulary(const QString &modelFolder, const PersonalVocabulary &vocabulary);
    std::vector<HeardWord> heardWords() const;

    ps_decoder_s *m_decoder;
    PersonalVocabulary m_vocabulary;
    QHash<QByteArray, QString> m_spellings;
};

} // namespace talmo
