#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace talmo {

/// Tells chords from speech. A voice never holds a tone quite still; instruments do. What counts is the share of the
/// sound's strength in tones that keep their pitch for more than two thirds of a second: next to nothing where people
/// speak, six tenths at most with the most monotonous of synthetic voices, nine tenths where nothing but chords are
/// heard. Speech over music has little of it, so that nothing spoken is taken for music.
class SteadySound {
public:
    SteadySound();
    ~SteadySound();
    SteadySound(const SteadySound &) = delete;
    SteadySound &operator=(const SteadySound &) = delete;

    /// One channel, 16,000 samples a second.
    void add(std::span<const std::int16_t> samples);
    /// From 0 to 1, of all that was added since the last reset; 0 while that is too short to tell.
    double share() const;
    void reset();

private:
    struct Transform;
    /// A tone that has been heard without a break.
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
