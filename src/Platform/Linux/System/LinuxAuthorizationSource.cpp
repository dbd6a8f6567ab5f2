#include "Platform/Linux/System/LinuxAuthorizationSource.h"

#include "Base/Completion.h"

#include <utility>

namespace talmo {

namespace {

constexpr int microphoneDenied = 2;
constexpr int authorized = 3;

} // namespace

LinuxAuthorizationSource::LinuxAuthorizationSource(std::function<bool()> isMicrophoneRefused,
                                                   std::function<QFuture<bool>()> askAgain)
    : m_isMicrophoneRefused(std::move(isMicrophoneRefused)),
      m_askAgain(std::move(askAgain))
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
    const bool isAuthorized = microphoneStatus() == authorized;
    return isAuthorized || !m_askAgain ? makeReadyFuture(bool(isAuthorized)) : m_askAgain();
}

QFuture<int> LinuxAuthorizationSource::requestSpeechRecognitionAuthorization()
{
    return makeReadyFuture(int(authorized));
}

} // namespace talmo
