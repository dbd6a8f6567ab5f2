#pragma once

#include "Recognition/PocketSphinx/MicrophoneCalibration.h"
#include "Recognition/PocketSphinx/MicrophoneMemory.h"
#include "Recognition/PocketSphinx/PocketSphinxDecoderPool.h"
#include "Recognition/PocketSphinx/UtterancePublisher.h"
#include "Recognition/PocketSphinx/UtteranceSegmenter.h"
#include "Recognition/PocketSphinx/UtteranceSound.h"
#include "Recognition/RecordingDecoder.h"
#include "Recognition/Signal/NoiseReduction.h"

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
    void calibrate(std::span<const std::int16_t> samples);
    bool calibrateFromHeld();
    void endCalibration();
    void listen(std::span<const std::int16_t> samples, std::span<const std::int16_t> withoutNoise);
    void beginUtterance();
    void endUtterance();
    void recogniseAgain();
    QString heard() const;

    std::shared_ptr<PocketSphinxDecoderPool> m_pool;
    std::shared_ptr<MicrophoneMemory> m_memory;
    UtterancePublisher m_transcript;
    QString m_microphoneName;
    std::shared_ptr<NoiseReduction> m_noise;
    /// The noise is taken out of what is recognised.
    bool m_reducesNoise;
    std::unique_ptr<PocketSphinxDecoder> m_decoder;
    /// The decoder refused something, so its state is unknown.
    bool m_isBroken = false;
    bool m_isInUtterance = false;
    MicrophoneCalibration m_calibration;
    /// In samples, of the current utterance; 0 for a known microphone.
    std::size_t m_calibratedWith = 0;
    UtteranceSegmenter m_segmenter;
    UtteranceSound m_sound;
};

} // namespace talmo
