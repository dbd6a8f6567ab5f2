#include "Platform/Linux/LinuxAuthorizationSource.h"

#include "Base/Completion.h"

#include <utility>

namespace talmo {

namespace {

constexpr int microphoneDenied = 2;
constexpr int authorized = 3;

} // namespace

LinuxAuthorizationSource::LinuxAuthorizationSource(std::function<bool()> isMicrophoneRefused)
    : m_isMicrophoneRefused(std::move(isMicrophoneRefused))
{
}

int LinuxAuthorizationSource::microphoneStatus() const
{
    return m_isMicrophoneRefused() ? microphoneDenied : authorized;
}

int LinuxAuthorizationSource::speechRecognitionStatus() const
{
    return authorized;
}

QFuture<bool> LinuxAuthorizationSource::requestMicrophoneAccess()
{
    return ready(microphoneStatus() == authorized); // There is nobody who could be asked.
}

QFuture<int> LinuxAuthorizationSource::requestSpeechRecognitionAuthorization()
{
    return ready(int(authorized));
}

} // namespace talmo
