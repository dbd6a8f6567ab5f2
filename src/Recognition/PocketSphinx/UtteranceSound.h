#pragma once

#include "Recognition/Signal/MusicDetector.h"
#include "Recognition/Signal/SpeechPresence.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <utility>
#include <vector>

namespace talmo {

/// The sound of the current utterance, kept so that it can be recognised again when more is known about the microphone
/// or the noise. Samples are 16 kHz, one channel.
class UtteranceSound {
public:
    /// Appends the samples without their noise.
    using Reduce = std::function<void(std::span<const std::int16_t> samples, std::vector<std::int16_t> &reduced)>;

    /// `activity`: reset; null if there is none.
    explicit UtteranceSound(std::shared_ptr<VoiceActivity> activity = {})
        : m_presence(std::move(activity))
    {
    }

    /// `samples`: as recorded. `isReduced`: whether they are recognised without their noise. Returns what is to be
    /// recognised, valid until the next call that changes this.
    std::span<const std::int16_t> add(std::span<const std::int16_t> samples, const Reduce &reduce, bool isReduced);
    /// More of the sound that is recognised.
    void add(std::span<const std::int16_t> samples);
    void clear();

    std::size_t length() const { return m_recognised.size(); }
    std::span<const std::int16_t> recognised() const { return m_recognised; }
    /// Empty while the reduced sound is recognised anyway.
    std::span<const std::int16_t> withoutNoise() const { return m_withoutNoise; }
    /// From now on the sound without noise is the one that is recognised, as if it had always been.
    void continueWithoutNoise() { m_recognised = std::exchange(m_withoutNoise, {}); }
    /// The quietest passage of this many samples: the sound of the room without speech. Empty if the utterance is
    /// shorter.
    std::span<const std::int16_t> quietest(std::size_t count) const;
    /// Whether no frame of this length in the last `count` samples is more than twice as loud as the quietest passage
    /// of that many samples. False if the utterance is shorter.
    bool endsQuietly(std::size_t count, std::size_t frame) const;
    /// Whether nobody speaks, as in music, in which the decoder would hear words.
    bool isWithoutSpeech() const;

private:
    MusicDetector m_music;
    SpeechPresence m_presence;
    std::vector<std::int16_t> m_recognised;
    std::vector<std::int16_t> m_withoutNoise;
};

} // namespace talmo
