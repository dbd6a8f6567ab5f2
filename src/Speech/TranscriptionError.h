#pragma once

#include "Base/Error.h"

namespace talmo {

/// What can go wrong with a transcription, each with the sentence the user sees.
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
