#include "Input/Permissions/PermissionsManager.h"

#include <QCoro/QCoroFuture>

#include <utility>

namespace talmo {

namespace {

constexpr int rawAuthorized = 3;

/// 1 and 2 are restricted and denied, in a different order for each permission; both count as denied.
SimpleStatus simpleStatus(int raw)
{
    switch (raw) {
    case 1:
    case 2:
        return SimpleStatus::Denied;
    case rawAuthorized:
        return SimpleStatus::Granted;
    default:
        return SimpleStatus::NotDetermined;
    }
}

} // namespace

PermissionsManager::PermissionsManager(std::shared_ptr<AuthorizationSource> authorization,
                                       std::shared_ptr<InputTrust> inputTrust,
                                       std::shared_ptr<SettingsPaneOpener> paneOpener)
    : m_authorization(std::move(authorization)),
      m_inputTrust(std::move(inputTrust)),
      m_paneOpener(std::move(paneOpener))
{
    refresh();
}

bool PermissionsManager::allGranted() const
{
    return m_microphoneStatus == SimpleStatus::Granted && m_speechRecognitionStatus == SimpleStatus::Granted &&
           m_accessibilityGranted;
}

void PermissionsManager::refresh()
{
    publish(m_microphoneStatus, simpleStatus(m_authorization->microphoneStatus()));
    publish(m_speechRecognitionStatus, simpleStatus(m_authorization->speechRecognitionStatus()));
    publish(m_accessibilityGranted, m_inputTrust->isTrusted());
}

QCoro::Task<bool> PermissionsManager::requestMicrophonePermission()
{
    return askForMicrophone(this, m_authorization);
}

QCoro::Task<bool> PermissionsManager::askForMicrophone(QPointer<PermissionsManager> self,
                                                       std::shared_ptr<AuthorizationSource> authorization)
{
    const bool granted = co_await authorization->requestMicrophoneAccess();
    if (self) {
        self->refresh();
    }
    co_return granted;
}

QCoro::Task<bool> PermissionsManager::requestSpeechRecognitionPermission()
{
    return askForSpeechRecognition(this, m_authorization);
}

QCoro::Task<bool> PermissionsManager::askForSpeechRecognition(QPointer<PermissionsManager> self,
                                                              std::shared_ptr<AuthorizationSource> authorization)
{
    const int status = co_await authorization->requestSpeechRecognitionAuthorization();
    if (self) {
        self->refresh();
    }
    co_return status == rawAuthorized;
}

void PermissionsManager::requestAccessibility()
{
    publish(m_accessibilityGranted, m_inputTrust->requestTrust());
}

void PermissionsManager::openAccessibilitySettings()
{
    m_paneOpener->open(SettingsPane::Accessibility);
}

void PermissionsManager::openMicrophoneSettings()
{
    m_paneOpener->open(SettingsPane::Microphone);
}

} // namespace talmo
