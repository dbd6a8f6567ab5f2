#include "Main/TalmoApp.h"

#include "App/AppDelegate.h"
#include "App/DictationCancellation.h"
#include "Base/CancellableWait.h"
#include "Base/Log.h"
#include "Base/Task.h"
#include "Control/ControlServer.h"
#include "Control/ControlSocket.h"
#include "LanguageModel/SmallerModel.h"
#include "Main/DictationOptionsModel.h"
#include "Main/HotkeySettingsModel.h"
#include "Main/LanguageSettingsModel.h"
#include "Main/MicrophoneSettingsModel.h"
#include "Main/PasswordFieldSettingsModel.h"
#include "Main/RecogniserSettingsModel.h"
#include "Main/Shutdown.h"
#include "Main/WarmUp.h"
#include "Main/WordPronunciationsModel.h"
#include "Platform/Linux/Session/ControlBus.h"
#include "Platform/Linux/Session/DesktopNotice.h"
#include "Platform/Linux/Session/DesktopSettingsOpener.h"
#include "Platform/Linux/Session/XdgAutostart.h"
#include "Platform/Linux/Sound/EventSounds.h"
#include "Platform/Linux/System/JsonUserDefaults.h"
#include "Platform/Linux/System/LinuxServerTrust.h"
#include "Platform/Linux/System/ProcessMemory.h"
#include "Platform/Linux/System/SystemLocaleSource.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "Settings/TalmoSettings.h"
#include "UI/Style/Wording.h"
#include "UI/UserInterface.h"

#include <QGuiApplication>

#include <utility>

namespace talmo {

namespace {

const QString welcomeShownKey = QStringLiteral("linux.welcomeShown");
const QString iconMissingToldKey = QStringLiteral("linux.iconMissingTold");
/// How long a panel may take to start with the session.
constexpr Duration panelStartTime = std::chrono::seconds(10);

/// The recogniser changes even if the choice cannot be saved; then the caller gets the error.
QCoro::Task<void> chooseRecogniser(std::shared_ptr<RecogniserSettingsModel> recogniser,
                                   std::shared_ptr<JsonUserDefaults> defaults, QString id)
{
    recogniser->choose(id);
    const auto saving = defaults->saved();
    co_await saving;
}

QString describe(const DesktopLimit &limit)
{
    return Wording::text(limit.sentence) + QLatin1Char(' ') + Wording::text(limit.remedy);
}

ControlSocket::Status currentStatus()
{
    const auto &state = TalmoCoordinator::shared().state();
    return {name(state), state.message()};
}

EditingServer editingServer(const LoopbackLanguageModel::Server &server, const EditingPace &pace)
{
    EditingServer shown{server.model, server.place, server.refused};
    if (pace.isSlow(server.model)) {
        const auto slow = std::chrono::duration_cast<std::chrono::seconds>(EditingPace::slowEdit);
        const auto faster = smallerModel(server.model).value_or(RecommendedModel());
        shown.slowness =
            EditingServer::Slowness{static_cast<int>(slow.count()), faster.name, faster.megabytes, faster.licence};
    }
    return shown;
}

} // namespace

TalmoApp::TalmoApp(const OpenDesktop &open)
    : m_clock(std::make_shared<TimerFdClock>()),
      m_defaults(JsonUserDefaults::ofThisUser(m_executors.settings)),
      m_linuxSettings(LinuxSettings::read(*m_defaults)),
      m_desktop(std::make_shared<Desktop>(open({m_clock, m_linuxSettings.standInKeys, m_linuxSettings.readKeyboards,
                                                m_linuxSettings.colourScheme, [this] { Q_EMIT quitRequested(); }}))),
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
    showInterface(coordinator);
    tellLimitsOnce();
    followMicrophone();
    followPause();
    listenForOthers();
    welcome();
}

/// A recording goes on without the chosen microphone, so that no sentence is lost; nobody looks into the settings then.
void TalmoApp::followMicrophone()
{
    const auto tell = [weak = std::weak_ptr(m_microphone)] {
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

bool TalmoApp::isFirstTime(const QString &key)
{
    const bool isFirst = !m_defaults->boolean(key).value_or(false);
    if (isFirst) {
        m_defaults->set(key, true);
    }
    return isFirst;
}

void TalmoApp::welcome()
{
    if (isFirstTime(welcomeShownKey)) {
        m_interface->openWelcome();
    }
    if (!m_defaults->boolean(iconMissingToldKey).value_or(false)) {
        logEscapes(tellWhereTalmoIs(this));
    }
}

/// Once: who has been told knows. Not at once: a panel may start after Talmo.
QCoro::Task<void> TalmoApp::tellWhereTalmoIs(QPointer<TalmoApp> self)
{
    const std::shared_ptr<Clock> clock = self->m_clock;
    const auto time = clock->sleep(panelStartTime);
    const bool isDue = co_await hasElapsed(time);
    if (!isDue || !self || !self->m_desktop->statusItem || self->m_desktop->statusItem->isShown()) {
        co_return;
    }
    self->m_defaults->set(iconMissingToldKey, true);
    showDesktopNotice(Wording::text(QT_TRANSLATE_NOOP(
        "Talmo", "Talmo is running. This desktop has no place for its icon: start Talmo again to open its settings.")));
}

void TalmoApp::tellLimitsOnce()
{
    for (const auto &limit : m_desktop->limits) {
        if (isFirstTime(QStringLiteral("linux.told.") + QString::fromUtf8(limit.name))) {
            showDesktopNotice(describe(limit));
        }
    }
}

void TalmoApp::showInterface(TalmoCoordinator &coordinator)
{
    m_recogniserSettings = std::make_shared<RecogniserSettingsModel>(m_recognisers.engines, m_recognisers.models,
                                                                     m_defaults, m_recognisers.factories, m_locale);
    ViewContext context;
    context.coordinator = &coordinator;
    context.settings = TalmoSettings::shared();
    context.permissions = m_services->permissions;
    context.unavailabilityMessage = [cleanup = m_services->cleanup] { return cleanup->unavailabilityMessage(); };
    context.refreshAvailability = [model = m_languageModel] { return model->refresh(); };
    context.editingServer = [model = m_languageModel, pace = m_services->editingPace] {
        return editingServer(model->server(), *pace);
    };
    context.recogniser = m_recogniserSettings;
    context.recovery = m_services->recovery;
    context.passwordFields = m_passwordFields;
    context.options = m_options;
    context.history = m_services->history;
    context.pronunciations = std::make_shared<WordPronunciationsModel>(
        EngineRegistry::pronunciationsPath(), m_executors.settings, m_executors.main,
        [weakEngines = std::weak_ptr(m_recognisers.engines)] {
            if (const auto engines = weakEngines.lock()) {
                engines->setWords(TalmoSettings::shared()->dictionaryWords());
            }
        });
    context.pause = m_services->pause;
    m_microphone = std::make_shared<MicrophoneSettingsModel>(
        m_defaults, m_clock, [engine = m_audioEngine](const QString &name) { engine->chooseMicrophone(name); });
    context.microphone = m_microphone;
    if (m_desktop->hotkeys) {
        m_hotkeys = std::make_shared<HotkeySettingsModel>(m_defaults, m_desktop->hotkeys, [](const QString &name) {
            TalmoSettings::shared()->setHotkeyDisplayName(name);
        });
    }
    context.hotkeys = m_hotkeys;
    m_language = std::make_shared<LanguageSettingsModel>(m_defaults, m_locale, m_recognisers.engines,
                                                         m_recogniserSettings, m_recognisers.models->catalogue());
    context.language = m_language;
    context.desktopExtension = m_desktop->extension;
    for (const auto &limit : m_desktop->limits) {
        context.limits.append(describe(limit));
    }
    context.beginRecording = [gestures = m_services->gestures] { gestures->beginGesture(); };
    context.endRecording = m_services->endGesture;
    context.canOpenSettings = &DesktopSettingsOpener::canOpen;
    const UserInterfaceParts parts{m_desktop->statusItem, m_desktop->makePanelWindow, m_desktop->screens,
                                   m_desktop->focus, m_desktop->shell};
    m_interface = std::make_unique<UserInterface>(context, parts);
}

void TalmoApp::listenForOthers()
{
    ControlActions actions;
    actions.insert = [insertion = m_services->insertion](const QString &text) {
        return insertion->insertExactly(text);
    };
    actions.openSettings = [this] { m_interface->openSettings(); };
    actions.toggleMenu = [this] { m_interface->toggleMenu(); };
    actions.chooseRecogniser = [recogniser = m_recogniserSettings, defaults = m_defaults](const QString &id) {
        return chooseRecogniser(recogniser, defaults, id);
    };
    const auto recovery = m_services->recovery;
    actions.lastDictation = [recovery](bool isRaw) { return isRaw ? recovery->lastRawText() : recovery->lastText(); };
    actions.putEarlierClipboardBack = [recovery] { return recovery->putEarlierClipboardBack(); };
    actions.setPaused = [pause = m_services->pause](bool isPaused) { pause->setPaused(isPaused); };
    actions.moveKey = [commanded = m_services->commandedKeys, keys = m_services->keys,
                       cancellation = m_services->cancellation](auto command) {
        switch (command) {
        case ControlSocket::KeyCommand::Press:
            commanded->press();
            break;
        case ControlSocket::KeyCommand::Release:
            commanded->release();
            break;
        case ControlSocket::KeyCommand::Toggle:
            commanded->toggle([&keys] { return keys->recognizer().activeMode().has_value(); });
            break;
        case ControlSocket::KeyCommand::Cancel:
            cancellation->discard();
            break;
        }
    };
    actions.lastTrace = [trace = m_services->trace] { return trace->table(); };
    actions.status = &currentStatus;
    m_bus = std::make_unique<ControlBus>(QDBusConnection::sessionBus(), actions);
    m_bus->open();
    connect(
        &TalmoCoordinator::shared(), &Observable::objectWillChange, m_bus.get(),
        [bus = m_bus.get()] { bus->tellState(); }, Qt::QueuedConnection);
    m_control = std::make_unique<ControlServer>(std::move(actions), m_clock);
    m_control->listen(ControlSocket::path());
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

/// The sound server may allow by now what it refused before, and only asking again tells.
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
    m_control.reset();
    m_bus.reset();
    m_interface.reset();
    m_microphone.reset();
    m_hotkeys.reset();
    m_desktop->appearance.reset();
    m_desktop->statusItem.reset();
    TalmoCoordinator::shared(); // So that there are services to shut down, even if start() was never called.
    return talmo::shutDown(
        {m_executors, m_services, m_desktop, m_recognisers.models, m_languageModel, m_defaults, m_clock});
}

} // namespace talmo
