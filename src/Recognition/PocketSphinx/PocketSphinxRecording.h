#pragma once

#include "Recognition/PocketSphinx/MicrophoneCalibration.h"
#include "Recognition/PocketSphinx/MicrophoneCalibrationStore.h"
#include "Recognition/PocketSphinx/PocketSphinxDecoderPool.h"
#include "Recognition/PocketSphinx/SecondHearing.h"
#include "Recognition/PocketSphinx/UtterancePublisher.h"
#include "Recognition/PocketSphinx/UtteranceSegmenter.h"
#include "Recognition/PocketSphinx/UtteranceSound.h"
#include "Recognition/RecordingDecoder.h"
#include "Recognition/Signal/NoiseReduction.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace talmo {

/// What the embedded engine knows about the microphones.
struct MicrophoneKnowledge {
    /// The name of the current microphone, called on the decoder thread. Empty if unknown.
    std::function<QString()> currentName;
    std::shared_ptr<MicrophoneCalibrationStore> memory;
    /// The noise around each microphone, by its name. On the decoder thread.
    std::shared_ptr<QHash<QString, std::shared_ptr<NoiseReduction>>> noise =
        std::make_shared<QHash<QString, std::shared_ptr<NoiseReduction>>>();

    /// Created if missing.
    std::shared_ptr<NoiseReduction> noiseAround(const QString &name) const;
};

/// One recording, split at its pauses, so that little is left to do at its end.
class PocketSphinxRecording final : public RecordingDecoder {
public:
    /// Takes a decoder from the pool and returns it in the end, unless it has failed. `activity`: reset; null if there
    /// is none. Throws Error.
    PocketSphinxRecording(std::shared_ptr<PocketSphinxDecoderPool> pool, const MicrophoneKnowledge &microphone,
                          std::shared_ptr<VoiceActivity> activity, Publish publish);
    ~PocketSphinxRecording() override;

    void process(std::span<const std::int16_t> samples) override;
    void finish() override;

private:
    QString soundName() const;
    void calibrate(std::span<const std::int16_t> samples);
    bool calibrateFromHeld();
    void endCalibration();
    std::vector<std::int16_t> withoutNoise(std::span<const std::int16_t> samples);
    void listen(std::span<const std::int16_t> samples);
    void publishOrEnd();
    void beginUtterance();
    void endUtterance();
    void prepareNextUtterance();
    void hearAgain(std::size_t newSamples);
    void beginSecondHearing();
    void settleSecondHearing(std::size_t longestBehind);
    std::size_t pauseAtEnd() const;
    void addPause(std::size_t heardPause);
    void learnMicrophone();
    std::span<const std::int16_t> soundForSecondHearing() const;
    QString heard() const;

    std::shared_ptr<PocketSphinxDecoderPool> m_pool;
    std::shared_ptr<MicrophoneCalibrationStore> m_memory;
    UtterancePublisher m_transcript;
    QString m_microphoneName;
    std::shared_ptr<NoiseReduction> m_noise;
    /// Whether the sound without noise is recognised.
    bool m_reducesNoise;
    std::unique_ptr<PocketSphinxDecoder> m_decoder;
    /// The decoder has failed, so its state is unknown.
    bool m_isBroken = false;
    bool m_isInUtterance = false;
    /// Its end was recognised; it was not cancelled.
    bool m_isFinished = false;
    MicrophoneCalibration m_calibration;
    /// In samples of the current utterance; 0 for a known microphone.
    std::size_t m_calibratedWith = 0;
    UtteranceSegmenter m_segmenter;
    UtteranceSound m_sound;
    /// Takes over once it has caught up with the recording.
    std::optional<SecondHearing> m_second;
    /// Whether that one decodes the sound without noise.
    bool m_secondReducesNoise = false;
};

} // namespace talmo
