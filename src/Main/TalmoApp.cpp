#include "Main/TalmoApp.h"

#include "App/AppDelegate.h"
#include "Base/Task.h"
#include "Main/DictationOptionsModel.h"
#include "Main/FirstTimeNotices.h"
#include "Main/PasswordFieldSettingsModel.h"
#include "Main/RemoteControl.h"
#include "Main/SettingsModels.h"
#include "Main/Shutdown.h"
#include "Main/Views.h"
#include "Main/WarmUp.h"
#include "Platform/Linux/Session/DesktopNotice.h"
#include "Platform/Linux/Session/XdgAutostart.h"
#include "Platform/Linux/Sound/EventSounds.h"
#include "Platform/Linux/System/JsonUserDefaults.h"
#include "Platform/Linux/System/LinuxServerTrust.h"
#include "Platform/Linux/System/ProcessMemory.h"
#include "Platform/Linux/System/SystemLocaleSource.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "Settings/TalmoSettings.h"
#include "UI/Style/Wording.h"

#include <QGuiApplication>

namespace talmo {

TalmoApp::TalmoApp(const OpenDesktop &open)
    : m_clock(std::make_shared<TimerFdClock>()),
      m_defaults(JsonUserDefaults::ofThisUser(m_executors.settings)),
      m_linuxSettings(LinuxSettings::read(*m_defaults)),
      m_desktop(std::make_shared<Desktop>(
          open({m_clock, m_linuxSettings.standInKeys, m_linuxSettings.readKeyboards, m_linuxSettings.colourScheme,
                [this] { Q_EMIT quitRequested(); }, m_defaults}))),
      m_languageModel(std::make_shared<LoopbackLanguageModel>(m_linuxSettings.languageModel, m_executors.cleanup,
                                                              m_clock, std::make_shared<LinuxServerTrust>())),
      m_audioEngine(std::make_shared<PulseAudioEngine>()),
      m_recognisers(Recognisers::make(m_executors.decoder, m_clock,
                                      {engineOptions(), m_linuxSettings.speechEngine, &ProcessMemory::releaseFreed})),
      m_passwordFields(std::make_shared<PasswordFieldSettingsModel>(m_defaults)),
      m_options(std::make_shared<DictationOptionsModel>(m_defaults)),
      m_locale(std::make_shared<SystemLocaleSource>(m_linuxSettings.dictationLanguage))
{
    m_defaults->registerDefault(hotkeyDisplayNameKey(), m_desktop->hotkeyName);
    m_defaults->setOnWriteFailed([](const char *problem) { showDesktopNotice(Wording::text(problem)); });
    TalmoSettings::setSharedFactory([defaults = m_defaults] {
        return std::make_shared<TalmoSettings>(defaults, std::make_shared<XdgAutostart>(XdgAutostart::forThisSession(
                                                             QCoreApplication::applicationFilePath())));
    });
    TalmoCoordinator::setSharedFactory([this] {
        const ServiceParts parts = serviceParts();
        m_services = std::make_shared<Services>(parts);
        return m_services->makeCoordinator(parts);
    });
}

TalmoApp::~TalmoApp()
{
    m_interface.reset();
    TalmoCoordinator::releaseShared();
    TalmoCoordinator::setSharedFactory({});
    TalmoSettings::releaseShared();
    TalmoSettings::setSharedFactory({});
}

EngineFactories::Options TalmoApp::engineOptions() const
{
    return {m_linuxSettings.neuralLibrary, [engine = m_audioEngine] { return engine->sourceName(); }};
}

ServiceParts TalmoApp::serviceParts()
{
    ServiceParts parts;
    parts.executors = m_executors;
    parts.clock = m_clock;
    parts.desktop = m_desktop;
    parts.audioEngine = m_audioEngine;
    parts.speech = m_recognisers.engines->platform();
    parts.languageModel = m_languageModel;
    parts.locale = m_locale;
    parts.guardsPasswordFields = [fields = m_passwordFields] { return fields->isGuarded(); };
    parts.options = m_options;
    parts.cuePlayer = std::make_shared<EventSounds>();
    parts.clearTheWay = [this] { return m_interface ? m_interface->clearTheWay() : makeReadyFuture(); };
    return parts;
}

void TalmoApp::start()
{
    auto &coordinator = TalmoCoordinator::shared();
    m_warmUp = std::make_unique<WarmUp>(
        WarmUp::Parts{m_services->eventMonitor, m_services, m_recognisers.engines, m_languageModel, m_locale, m_clock},
        coordinator);
    m_languageModel->refresh();
    m_delegate = std::make_unique<AppDelegate>(m_desktop->shell, m_services->permissions);
    m_delegate->applicationDidFinishLaunching();
    followActivation();
    m_models = std::make_unique<SettingsModels>(SettingsModels::Parts{m_executors, m_clock, m_defaults, m_recognisers,
                                                                      m_locale, m_audioEngine, m_desktop->hotkeys});
    m_interface =
        makeViews({m_services, m_languageModel, m_passwordFields, m_options, m_desktop}, *m_models, coordinator);
    followMicrophone();
    followPause();
    m_remoteControl = std::make_unique<RemoteControl>(
        RemoteControl::Parts{m_services, m_models->recogniser, m_defaults, m_clock}, *m_interface, coordinator);
    m_notices = std::make_unique<FirstTimeNotices>(FirstTimeNotices::Parts{
        m_defaults, m_clock, m_desktop, [this] { m_interface->openWelcome(); }, &showDesktopNotice});
    m_notices->show();
}

/// A recording continues without the chosen microphone, so that no sentence is lost. The notice is for users who do not
/// have the settings open.
void TalmoApp::followMicrophone()
{
    const auto tell = [weak = std::weak_ptr(m_models->microphone)] {
        if (const auto microphone = weak.lock()) {
            const QString text = Wording::text(QT_TRANSLATE_NOOP(
                "Talmo", "“%1” is not connected. Talmo records from the system's default microphone instead."));
            showDesktopNotice(text.arg(microphone->chosenTitle()));
        }
    };
    m_audioEngine->setOnChosenMissing([tell, executor = m_executors.main](bool isMissing) {
        if (isMissing) {
            executor->post(tell);
        }
    });
}

/// A paused Talmo keeps no key from the other programs.
void TalmoApp::followPause()
{
    if (!m_desktop->hotkeys) {
        return;
    }
    const auto *pause = m_services->pause.get();
    connect(
        pause, &Observable::objectWillChange, this,
        [this, pause] { m_desktop->hotkeys->setReleased(pause->isPaused()); }, Qt::QueuedConnection);
}

void TalmoApp::followActivation()
{
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive) {
            m_delegate->applicationDidBecomeActive();
            logEscapes(askAgainIfDenied(m_services->permissions));
        }
    });
}

/// The sound server may have lifted its refusal, which only another request can tell.
QCoro::Task<void> TalmoApp::askAgainIfDenied(std::shared_ptr<PermissionsManager> permissions)
{
    if (permissions->microphoneStatus() == SimpleStatus::Denied) {
        co_await permissions->requestMicrophonePermission();
    }
}

QFuture<bool> TalmoApp::finishDictation()
{
    return m_services ? m_services->gestures->finishDictation(longestLastDictation) : makeReadyFuture(true);
}

QCoro::Task<void> TalmoApp::shutDown()
{
    m_warmUp.reset();
    m_notices.reset();
    m_remoteControl.reset();
    m_interface.reset();
    m_models.reset();
    m_desktop->appearance.reset();
    m_desktop->statusItem.reset();
    TalmoCoordinator::shared(); // Creates the services to shut down, even if start() was never called.
    return talmo::shutDown(
        {m_executors, m_services, m_desktop, m_recognisers.models, m_languageModel, m_defaults, m_clock});
}

} // namespace talmo
