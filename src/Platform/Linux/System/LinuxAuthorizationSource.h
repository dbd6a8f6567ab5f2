#pragma once

#include "Input/Permissions/AuthorizationSource.h"

#include <functional>

namespace talmo {

/// A plain Linux session asks nobody before a microphone is opened, and the recogniser is our own. Denied is only what
/// the sound server has refused; one that is not there says so when capture starts.
class LinuxAuthorizationSource final : public AuthorizationSource {
public:
    /// `isMicrophoneRefused`: whether the sound server kept Talmo out the last time it was asked; must not wait.
    /// `askAgain`: asks the server once more whether it lets Talmo in; finishes on any thread. None where nobody can be
    /// asked.
    explicit LinuxAuthorizationSource(std::function<bool()> isMicrophoneRefused,
                                      std::function<QFuture<bool>()> askAgain = {});

    int microphoneStatus() const override;
    int speechRecognitionStatus() const override;
    QFuture<bool> requestMicrophoneAccess() override;
    QFuture<int> requestSpeechRecognitionAuthorization() override;

private:
    std::function<bool()> m_isMicrophoneRefused;
    std::function<QFuture<bool>()> m_askAgain;
};

} // namespace talmo
