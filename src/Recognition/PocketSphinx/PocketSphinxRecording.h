#pragma once

#include "Recognition/PocketSphinx/MicrophoneMemory.h"
#include "Recognition/PocketSphinx/PocketSphinxDecoderPool.h"
#include "Recognition/RecordingDecoder.h"
#include "Recognition/Signal/NoiseReduction.h"
#include "Recognition/Signal/SteadySound.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

namespace talmo {

/// What the embedded recogniser needs to know of the microphone.
struct MicrophoneKnowledge {
    /// The name of the one that is recorded with; asked on the recogniser's thread. Empty when unknown.
    std::function<QString()> currentName;
    std::shared_ptr<MicrophoneMemory> memory;
    /// The noise around each, by its name. On the recogniser's thread.
    std::shared_ptr<QHash<QString, std::shared_ptr<NoiseReduction>>> noise =
        std::make_shared<QHash<QString, std::shared_ptr<NoiseReduction>>>();

    /// Made when it is not there yet.
    std::shared_ptr<NoiseReduction> noiseAround(const QString &name) const;
};

/// One recording, cut at its pauses, so that the end of it has little left to do.
class PocketSphinxRecording final : public RecordingDecoder {
public:
    /// Takes a decoder from the pool, and gives it back in the end unless it refused something. Throws Error.
    PocketSphinxRecording(std::shared_ptr<PocketSphinxDecoderPool> pool, const MicrophoneKnowledge &microphone,
                          Publish publish);
    ~PocketSphinxRecording() override;

    void process(std::span<const std::int16_t> samples) override;
    void finish() override;

private:
    QString soundName() const;
    void learn(std::span<const std::int16_t> samples);
    bool learnFromHeld();
    void endLearning();
    void listen(std::span<const std::int16_t> samples, std::span<const std::int16_t> withoutNoise);
    void beginUtterance();
    QString heard() const;
    void publishVolatile();
    bool isTimeToCut() const;
    void publishFinal();

    std::shared_ptr<PocketSphinxDecoderPool> m_pool;
    std::shared_ptr<MicrophoneMemory> m_memory;
    Publish m_publish;
    QString m_microphoneName;
    std::shared_ptr<NoiseReduction> m_noise;
    /// What is recognised is what is left when the noise is gone.
    bool m_reducesNoise;
    std::unique_ptr<PocketSphinxDecoder> m_decoder;
    /// Something was refused, so nothing is known of the decoder's state.
    bool m_isBroken = false;
    bool m_isInUtterance = false;
    bool m_wasInSpeech = false;
    bool m_hasHeardWords = false;
    QString m_volatileText;
    SteadySound m_steadySound;
    /// The current utterance, as it is recognised.
    std::vector<std::int16_t> m_utterance;
    /// The same without noise, as long as it is recognised with it.
    std::vector<std::int16_t> m_withoutNoise;
    /// What was said to a microphone that is not known yet, kept until there is enough to know it by.
    bool m_isLearning;
    std::vector<std::int16_t> m_held;
    /// In samples, of the utterance that goes on; nothing where the microphone was known.
    std::size_t m_learntFrom = 0;
    std::size_t m_enough;
};

} // namespace talmo
