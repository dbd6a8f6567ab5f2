#pragma once

#include "Base/Error.h"

namespace talmo {

/// Why a transcription failed; each case has its own message for the user.
class TranscriptionError : public Error {
public:
    enum class Case {
        OnDeviceUnavailable,
        LocaleNotSupported,
        ModelAssetsNotInstalled,
        NoCompatibleAudioFormat,
        NotRecording,
    };

    explicit TranscriptionError(Case which);

    Case which() const { return m_case; }

private:
    Case m_case;
};

} // namespace talmo
