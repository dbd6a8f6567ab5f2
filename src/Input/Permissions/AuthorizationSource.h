#pragma once

#include <QFuture>

namespace talmo {

/// The platform's raw authorisation status for the microphone and speech recognition. Main thread; reads never block.
///
/// Raw microphone statuses: 0 not determined, 1 restricted, 2 denied, 3 authorised.
/// Raw speech statuses: 0 not determined, 1 denied, 2 restricted, 3 authorised.
class AuthorizationSource {
public:
    virtual ~AuthorizationSource() = default;

    virtual int microphoneStatus() const = 0;
    virtual int speechRecognitionStatus() const = 0;

    /// Ask the user if undecided. Finish once, on any thread.
    virtual QFuture<bool> requestMicrophoneAccess() = 0;
    virtual QFuture<int> requestSpeechRecognitionAuthorization() = 0;
};

} // namespace talmo
