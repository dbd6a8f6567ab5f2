#pragma once

#include "App/Services/PipelineServices.h"
#include "Input/Permissions/AuthorizationSource.h"
#include "Input/Permissions/InputTrust.h"
#include "Input/Permissions/SettingsPaneOpener.h"

#include <QPointer>

#include <memory>

namespace talmo {

/// The three permissions that dictation needs, as last read. Main thread only; never polls.
class PermissionsManager final : public PermissionsService {
    Q_OBJECT

public:
    /// Reads all three.
    PermissionsManager(std::shared_ptr<AuthorizationSource> authorization, std::shared_ptr<InputTrust> inputTrust,
                       std::shared_ptr<SettingsPaneOpener> paneOpener);

    SimpleStatus microphoneStatus() const override { return m_microphoneStatus; }
    SimpleStatus speechRecognitionStatus() const override { return m_speechRecognitionStatus; }
    bool accessibilityGranted() const { return m_accessibilityGranted; }
    bool allGranted() const;

    void refresh();
    QCoro::Task<bool> requestMicrophonePermission() override;
    QCoro::Task<bool> requestSpeechRecognitionPermission() override;
    void requestAccessibility() override;

    /// Open the system's settings for the permission.
    void openAccessibilitySettings();
    void openMicrophoneSettings();

private:
    static QCoro::Task<bool> askForMicrophone(QPointer<PermissionsManager> self,
                                              std::shared_ptr<AuthorizationSource> authorization);
    static QCoro::Task<bool> askForSpeechRecognition(QPointer<PermissionsManager> self,
                                                     std::shared_ptr<AuthorizationSource> authorization);

    std::shared_ptr<AuthorizationSource> m_authorization;
    std::shared_ptr<InputTrust> m_inputTrust;
    std::shared_ptr<SettingsPaneOpener> m_paneOpener;
    SimpleStatus m_microphoneStatus = SimpleStatus::NotDetermined;
    SimpleStatus m_speechRecognitionStatus = SimpleStatus::NotDetermined;
    bool m_accessibilityGranted = false;
};

} // namespace talmo
