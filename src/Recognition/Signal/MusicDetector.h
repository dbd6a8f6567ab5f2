#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace talmo {

/// Distinguishes music from speech. A voice never holds a perfectly steady tone; instruments do. The measure is the
/// share of the sound's energy in tones that keep their pitch for more than 0.7 seconds: close to 0 for speech, at most
/// 0.6 for the most monotonous synthetic voices, and 0.9 for chords alone. Speech over music scores low, so no speech
/// is mistaken for music.
class MusicDetector {
public:
    MusicDetector();
    ~MusicDetector();
    MusicDetector(const MusicDetector &) = delete;
    MusicDetector &operator=(const MusicDetector &) = delete;

    /// One channel at 16 kHz.
    void add(std::span<const std::int16_t> samples);
    /// From 0 to 1, over everything added since the last reset(); 0 if that is too short to tell.
    double share() const;
    void reset();

private:
    struct Transform;
    /// A tone without a break.
    struct Tone {
        std::size_t place = 0;
        std::size_t firstPlace = 0;
        int frames = 0;
        double strength = 0;
    };

    void takeFrame();
    std::vector<std::size_t> peaks() const;

    std::unique_ptr<Transform> m_transform;
    std::vector<float> m_samples;
    std::vector<double> m_spectrum;
    std::vector<Tone> m_tones;
    double m_steady = 0;
    double m_all = 0;
};

} // namespace talmo
