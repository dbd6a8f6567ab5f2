#pragma once

#include "Input/Permissions/AuthorizationSource.h"

#include <functional>

namespace talmo {

/// A plain Linux session does not ask before a microphone is opened, and the recogniser is Talmo's own. Only a refusal
/// by the sound server counts as denied; a missing server is reported when capture starts.
class LinuxAuthorizationSource final : public AuthorizationSource {
public:
    /// `isMicrophoneRefused`: whether the sound server refused access the last time it was asked; must not block.
    /// `askAgain`: asks the server again whether it grants access; finishes on any thread. None if there is no server
    /// to ask.
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
