#pragma once

#include "Recognition/PocketSphinx/SearchWidth.h"
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

/// One loaded model of the embedded engine, about 100 MB. It keeps its calibration from one recording to the next. Not
/// thread-safe.
class PocketSphinxDecoder {
public:
    static constexpr int sampleRate = 16000;
    /// The average spectrum of a microphone and the voice in front of it, which the decoder uses to normalise its
    /// input.
    using CepstralMean = QList<float>;

    /// Takes a quarter of a second. Throws Error if the model cannot
    /// be loaded.
    static std::unique_ptr<PocketSphinxDecoder> load(const QString &modelFolder,
                                                     const PersonalVocabulary &vocabulary = {},
                                                     SearchWidth width = SearchWidth::Narrow);
    static bool isModelInstalled(const QString &modelFolder);

    ~PocketSphinxDecoder();
    PocketSphinxDecoder(const PocketSphinxDecoder &) = delete;
    PocketSphinxDecoder &operator=(const PocketSphinxDecoder &) = delete;

    /// These three throw Error if the decoder fails.
    void beginUtterance();
    void process(std::span<const std::int16_t> samples);
    void endUtterance();

    /// Whether there was speech at the end of the processed audio; turns false half a second after the last word.
    bool isInSpeech() const;
    /// The silence after the last word so far, in frames of a hundredth of a second.
    int trailingSilence() const;
    /// How much of the processed audio the search has not reached yet, in the same frames.
    int framesAhead() const;
    /// The words so far, or at the end, in the user's spelling; empty if there are none.
    QString hypothesis() const;

    CepstralMean cepstralMean() const;
    /// False if it does not fit this model.
    bool setCepstralMean(const CepstralMean &mean);
    /// Calibrates from the beginning of a recording; false if that contains too little speech. Between utterances.
    bool calibrate(std::span<const std::int16_t> samples);

    const PersonalVocabulary &vocabulary() const { return m_vocabulary; }
    SearchWidth searchWidth() const { return m_width; }
    /// Seconds of processor time for a second of speech; nullopt until there was enough of it to tell.
    std::optional<double> realTimeFactor() const;

private:
    explicit PocketSphinxDecoder(ps_decoder_s *decoder);

    struct DecodedWord;
    void makeSearch(const QString &modelFolder, const PersonalVocabulary &vocabulary, SearchWidth width);
    std::vector<DecodedWord> heardWords() const;

    ps_decoder_s *m_decoder;
    PersonalVocabulary m_vocabulary;
    QHash<QByteArray, QString> m_spellings;
    SearchWidth m_width = SearchWidth::Narrow;
    double m_processingSeconds = 0;
    std::size_t m_processedSamples = 0;
};

} // namespace talmo
