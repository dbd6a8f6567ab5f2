#pragma once

#include "Input/AuthorizationSource.h"

#include <functional>

namespace talmo {

/// A plain Linux session asks nobody before a microphone is opened, and the recogniser is our own. Denied is only what
/// the sound server has refused; one that is not there says so when capture starts.
class LinuxAuthorizationSource final : public AuthorizationSource {
public:
    /// Whether the sound server let Talmo in the last time it was asked. Must not wait.
    explicit LinuxAuthorizationSource(std::function<bool()> isMicrophoneRefused);

    int microphoneStatus() const override;
    int speechRecognitionStatus() const override;
    QFuture<bool> requestMicrophoneAccess() override;
    QFuture<int> requestSpeechRecognitionAuthorization() override;

private:
    std::function<bool()> m_isMicrophoneRefused;
};

} // namespace talmo
