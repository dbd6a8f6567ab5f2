#include "Recognition/Signal/MusicDetector.h"

#include <fftw3.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <mutex>
#include <numbers>

namespace talmo {

namespace {

constexpr std::size_t frameLength = 2048; // 128 ms, which separates tones 8 Hz apart.
constexpr std::size_t step = 512;
constexpr std::size_t places = frameLength / 2 + 1;
/// In frames: 0.7 seconds.
constexpr int steadyLength = 22;
/// Relative to the strongest peak; weaker peaks do not count as tones.
constexpr double weakest = 1e-3;

/// FFTW's planner is not thread-safe.
std::mutex &planning()
{
    static std::mutex mutex;
    return mutex;
}

} // namespace

struct MusicDetector::Transform {
    std::array<float, frameLength> window{};
    std::array<float, frameLength> input{};
    std::array<fftwf_complex, places> output{};
    fftwf_plan plan;

    Transform()
    {
        const std::lock_guard lock(planning());
        plan = fftwf_plan_dft_r2c_1d(frameLength, input.data(), output.data(), FFTW_ESTIMATE);
        for (std::size_t index = 0; index < frameLength; ++index) {
            const double phase = 2 * std::numbers::pi * static_cast<double>(index) / (frameLength - 1);
            window[index] = static_cast<float>((1 - std::cos(phase)) / 2);
        }
    }
    ~Transform()
    {
        const std::lock_guard lock(planning());
        fftwf_destroy_plan(plan);
    }
    Transform(const Transform &) = delete;
    Transform &operator=(const Transform &) = delete;
};

MusicDetector::MusicDetector()
    : m_transform(std::make_unique<Transform>()),
      m_spectrum(places)
{
}

MusicDetector::~MusicDetector() = default;

void MusicDetector::add(std::span<const std::int16_t> samples)
{
    constexpr float loudest = 32768;
    for (const auto sample : samples) {
        m_samples.push_back(static_cast<float>(sample) / loudest);
    }
    std::size_t begin = 0;
    while (m_samples.size() - begin >= frameLength) {
        for (std::size_t index = 0; index < frameLength; ++index) {
            m_transform->input[index] = m_samples[begin + index] * m_transform->window[index];
        }
        takeFrame();
        begin += step;
    }
    m_samples.erase(m_samples.begin(), m_samples.begin() + static_cast<std::ptrdiff_t>(begin));
}

void MusicDetector::takeFrame()
{
    fftwf_execute(m_transform->plan);
    for (std::size_t place = 0; place < places; ++place) {
        const auto &value = m_transform->output[place];
        // Weighted by frequency, roughly as the ear does, so that a hum does not count as music.
        m_spectrum[place] = (static_cast<double>(value[0]) * static_cast<double>(value[0]) +
                             static_cast<double>(value[1]) * static_cast<double>(value[1])) *
                            static_cast<double>(place);
    }
    std::vector<Tone> tones;
    for (const std::size_t place : peaks()) {
        const double strength = m_spectrum[place - 1] + m_spectrum[place] + m_spectrum[place + 1];
        m_all += strength;
        Tone tone{place, place, 1, strength};
        const auto isSame = [place](const Tone &each) {
            return each.frames > 0 && std::max(each.place, place) - std::min(each.place, place) <= 1 &&
                   std::max(each.firstPlace, place) - std::min(each.firstPlace, place) <= 1;
        };
        if (const auto before = std::find_if(m_tones.begin(), m_tones.end(), isSame); before != m_tones.end()) {
            tone = {place, before->firstPlace, before->frames + 1, before->strength + strength};
            before->frames = 0; // Continued by `tone`.
        }
        tones.push_back(tone);
    }
    for (const auto &ended : m_tones) {
        m_steady += ended.frames >= steadyLength ? ended.strength : 0;
    }
    m_tones = std::move(tones);
}

std::vector<std::size_t> MusicDetector::peaks() const
{
    const double strongest = *std::max_element(m_spectrum.begin(), m_spectrum.end());
    std::vector<std::size_t> found;
    for (std::size_t place = 2; place + 2 < places; ++place) {
        const double value = m_spectrum[place];
        if (value > strongest * weakest && value >= m_spectrum[place - 1] && value > m_spectrum[place + 1]) {
            found.push_back(place);
        }
    }
    return found;
}

double MusicDetector::share() const
{
    double steady = m_steady;
    for (const auto &tone : m_tones) {
        steady += tone.frames >= steadyLength ? tone.strength : 0;
    }
    return m_all > 0 ? steady / m_all : 0;
}

void MusicDetector::reset()
{
    m_samples.clear();
    m_tones.clear();
    m_steady = 0;
    m_all = 0;
}

} // namespace talmo
