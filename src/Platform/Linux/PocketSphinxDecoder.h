#pragma once

#include <QString>

#include <cstdint>
#include <memory>
#include <mutex>
#include <span>

struct ps_decoder_s;

namespace talmo {

/// One loaded model of the embedded recogniser, about 100 MB. It keeps what it learnt about the microphone from one
/// recording to the next. Not thread-safe.
class PocketSphinxDecoder {
public:
    static constexpr int sampleRate = 16000;

    /// Takes a quarter of a second. Throws Error when the model cannot be loaded.
    static std::unique_ptr<PocketSphinxDecoder> load(const QString &modelFolder);
    static bool isModelInstalled(const QString &modelFolder);

    ~PocketSphinxDecoder();
    PocketSphinxDecoder(const PocketSphinxDecoder &) = delete;
    PocketSphinxDecoder &operator=(const PocketSphinxDecoder &) = delete;

    /// All of these throw Error when the decoder refuses.
    void beginUtterance();
    void process(std::span<const std::int16_t> samples);
    void endUtterance();

    /// Whether somebody was speaking at the end of what was processed; turns false half a second after the last word.
    bool isInSpeech() const;
    /// The words so far, or at the end; empty when there are none.
    QString hypothesis() const;

private:
    explicit PocketSphinxDecoder(ps_decoder_s *decoder);

    ps_decoder_s *m_decoder;
};

/// Keeps one decoder for the next recording. Any thread.
class PocketSphinxDecoderPool {
public:
    explicit PocketSphinxDecoderPool(QString modelFolder);

    /// The one that is kept, or else a freshly loaded one. Throws Error.
    std::unique_ptr<PocketSphinxDecoder> take();
    void giveBack(std::unique_ptr<PocketSphinxDecoder> decoder);
    QString modelFolder() const { return m_modelFolder; }

private:
    const QString m_modelFolder;
    std::mutex m_mutex;
    std::unique_ptr<PocketSphinxDecoder> m_kept;
};

} // namespace talmo
