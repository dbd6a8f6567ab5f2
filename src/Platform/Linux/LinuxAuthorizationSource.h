#pragma once

#include "Input/AuthorizationSource.h"

namespace talmo {

/// A plain Linux session asks nobody before a microphone is opened, and the recogniser is our own. A sound server
/// that refuses says so when capture starts, in words that help more than a denied permission would.
class LinuxAuthorizationSource final : public AuthorizationSource {
public:
    int microphoneStatus() const override;
    int speechRecognitionStatus() const override;
    QFuture<bool> requestMicrophoneAccess() override;
    QFuture<int> requestSpeechRecognitionAuthorization() override;
};

} // namespace talmo
