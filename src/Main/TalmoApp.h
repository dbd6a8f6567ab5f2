#pragma once

#include "Main/Executors.h"
#include "Main/Services.h"
#include "Platform/Desktop.h"
#include "Platform/Linux/System/LinuxSettings.h"
#include "Recognition/Recognisers.h"

#include <QObject>

#include <functional>
#include <memory>

namespace talmo {

class AppDelegate;
class DictationOptionsModel;
class FirstTimeNotices;
class JsonUserDefaults;
class PasswordFieldSettingsModel;
class RemoteControl;
class SystemLocaleSource;
class TimerFdClock;
class UserInterface;
class WarmUp;
struct SettingsModels;

/// Composes Talmo of a desktop, the recognisers and the services. Main thread.
class TalmoApp final : public QObject {
    Q_OBJECT

public:
    using OpenDesktop = std::function<Desktop(const DesktopOptions &)>;

    /// Throws Error if the desktop cannot be opened.
    explicit TalmoApp(const OpenDesktop &open = &openDesktop);
    ~TalmoApp() override;

    /// Builds the coordinator, starts listening for the key, and shows the icon.
    void start();

    /// Ends the recording, if there is one, and inserts its sentence, or the one that is being processed, without the
    /// language model. False if five seconds were not enough.
    QFuture<bool> finishDictation();

    /// See Shutdown.h. Call it once.
    QCoro::Task<void> shutDown();

Q_SIGNALS:
    /// The user wants Talmo to end.
    void quitRequested();

private:
    EngineFactories::Options engineOptions() const;
    ServiceParts serviceParts();
    void followMicrophone();
    void followPause();
    void followActivation();
    static QCoro::Task<void> askAgainIfDenied(std::shared_ptr<PermissionsManager> permissions);

    Executors m_executors;
    std::shared_ptr<TimerFdClock> m_clock;
    std::shared_ptr<JsonUserDefaults> m_defaults;
    LinuxSettings m_linuxSettings;
    std::shared_ptr<Desktop> m_desktop;
    std::shared_ptr<LoopbackLanguageModel> m_languageModel;
    std::shared_ptr<PulseAudioEngine> m_audioEngine;
    Recognisers m_recognisers;
    std::shared_ptr<PasswordFieldSettingsModel> m_passwordFields;
    std::shared_ptr<DictationOptionsModel> m_options;
    std::shared_ptr<SystemLocaleSource> m_locale;
    std::shared_ptr<Services> m_services;
    std::unique_ptr<AppDelegate> m_delegate;
    std::unique_ptr<SettingsModels> m_models;
    std::unique_ptr<UserInterface> m_interface;
    std::unique_ptr<RemoteControl> m_remoteControl;
    std::unique_ptr<FirstTimeNotices> m_notices;
    std::unique_ptr<WarmUp> m_warmUp;
};

} // namespace talmo
