#pragma once

#include "App/TalmoCoordinator.h"
#include "Base/SerialExecutor.h"
#include "Platform/Linux/System/LinuxSettings.h"
#include "Recognition/Recognisers.h"
#include "UI/ViewContext.h"

#include <QObject>

#include <memory>

namespace talmo {

class AppDelegate;
class ControlServer;
class DeferringHotkeyService;
class DesktopAppearance;
class DictationRecovery;
class LastDictation;
class DesktopScreens;
class DesktopShell;
class InterruptibleCleanupService;
class JsonUserDefaults;
class Pasteboard;
class PressPreparation;
class PulseAudioEngine;
class PasswordFieldSettingsModel;
class SpeechPreroll;
class RecogniserSettingsModel;
class SystemLocaleSource;
class TextCleanupService;
class TimerFdClock;
class TrayIcon;
class UserInterface;
class XcbPasteboard;
class XInput2EventMonitor;
class XSession;

/// Puts Talmo together: the one place that knows every concrete class. Main thread.
class TalmoApp final : public QObject {
    Q_OBJECT

public:
    /// Throws Error when there is no display.
    TalmoApp();
    ~TalmoApp() override;

    /// Builds the coordinator, starts listening for the key, and shows the icon.
    void start();

    /// Ends the recording, if there is one, and inserts its sentence, or the one that is being processed, without the
    /// language model. False when five seconds were not enough.
    QFuture<bool> finishDictation();

    /// Ends in any state: the sentence under way is finished, or left on the clipboard; then capture and recognition
    /// stop, and a pending restore of the clipboard is completed. Call it once, with an event loop that runs.
    QCoro::Task<void> shutDown();

Q_SIGNALS:
    /// The user wants Talmo to end.
    void quitRequested();

private:
    EngineFactories::Options engineOptions() const;
    std::unique_ptr<TalmoCoordinator> makeCoordinator();
    std::shared_ptr<PermissionsManager> makePermissions();
    std::shared_ptr<TextInsertionService> makeInsertion();
    void showInterface(TalmoCoordinator &coordinator);
    void listenForOthers();
    void followActivation();
    void followDictionary();
    void followState(TalmoCoordinator &coordinator);
    void prepareOnPress();
    static QCoro::Task<void> askAgainIfDenied(std::shared_ptr<PermissionsManager> permissions);
    static QCoro::Task<void> keepOnClipboard(std::shared_ptr<CleanupService> cleanup,
                                             std::shared_ptr<Pasteboard> pasteboard, QString text);

    std::shared_ptr<SerialExecutor> m_mainExecutor;
    std::shared_ptr<SerialExecutor> m_speechExecutor;
    std::shared_ptr<SerialExecutor> m_recogniserExecutor;
    std::shared_ptr<SerialExecutor> m_cleanupExecutor;
    std::shared_ptr<SerialExecutor> m_settingsExecutor;
    std::shared_ptr<TimerFdClock> m_clock;
    std::shared_ptr<JsonUserDefaults> m_defaults;
    LinuxSettings m_linuxSettings;
    QList<quint32> m_standInKeys;
    std::shared_ptr<LoopbackLanguageModel> m_languageModel;
    std::shared_ptr<XSession> m_xSession;
    std::shared_ptr<XInput2EventMonitor> m_eventMonitor;
    std::shared_ptr<XcbPasteboard> m_pasteboard;
    std::shared_ptr<PulseAudioEngine> m_audioEngine;
    Recognisers m_recognisers;
    std::shared_ptr<RecogniserSettingsModel> m_recogniserSettings;
    std::shared_ptr<PasswordFieldSettingsModel> m_passwordFields;
    std::shared_ptr<SystemLocaleSource> m_locale;
    std::shared_ptr<RecorderService> m_recorder;
    std::shared_ptr<TranscriptionService> m_transcription;
    std::shared_ptr<LastDictation> m_lastDictation;
    std::shared_ptr<DictationRecovery> m_recovery;
    std::shared_ptr<TextInsertionService> m_insertion;
    std::shared_ptr<InputTrust> m_inputTrust;
    std::shared_ptr<PermissionsManager> m_permissions;
    std::shared_ptr<TextCleanupService> m_cleanup;
    std::shared_ptr<InterruptibleCleanupService> m_interruptibleCleanup;
    std::shared_ptr<SpeechPreroll> m_preroll;
    std::shared_ptr<DeferringHotkeyService> m_gestures;
    std::shared_ptr<DesktopShell> m_shell;
    std::shared_ptr<DesktopScreens> m_screens;
    std::shared_ptr<TrayIcon> m_trayIcon;
    std::unique_ptr<AppDelegate> m_delegate;
    std::unique_ptr<DesktopAppearance> m_appearance;
    std::unique_ptr<UserInterface> m_interface;
    std::unique_ptr<ControlServer> m_control;
    std::unique_ptr<PressPreparation> m_preparation;
};

} // namespace talmo
