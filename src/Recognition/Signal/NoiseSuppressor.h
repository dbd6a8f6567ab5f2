#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace talmo {

/// The WebRTC project's noise suppression. Its interface changed completely between the library's versions 0.3 and 1,
/// so there is a source file for each; the build takes the one for the installed version. Not thread-safe.
class NoiseSuppressor {
public:
    static constexpr int sampleRate = 16000;
    static constexpr std::size_t frameLength = sampleRate / 100;

    /// Throws Error if the library reports one.
    NoiseSuppressor();
    ~NoiseSuppressor();
    NoiseSuppressor(const NoiseSuppressor &) = delete;
    NoiseSuppressor &operator=(const NoiseSuppressor &) = delete;

    /// Both are `frameLength` samples of one channel. Throws Error.
    void process(const std::int16_t *frame, std::int16_t *reduced);

private:
    struct Library;
    std::unique_ptr<Library> m_library;
};

} // namespace talmo
