#include "Main/TalmoApp.h"

#include "App/AppDelegate.h"
#include "App/DeferringHotkeyService.h"
#include "App/DictationRecovery.h"
#include "App/PressPreparation.h"
#include "Base/Completion.h"
#include "Base/Log.h"
#include "Base/Task.h"
#include "Cleanup/TextCleanupService.h"
#include "Control/ControlServer.h"
#include "Control/ControlSocket.h"
#include "Input/Audio/AudioRecorder.h"
#include "Input/Audio/SpeexAudioConverter.h"
#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "Input/Permissions/PermissionsManager.h"
#include "Insertion/ClipboardPasteInsertionService.h"
#include "Insertion/PasswordFieldGuard.h"
#include "Insertion/QueuedInsertionService.h"
#include "Insertion/UnobstructedInsertionService.h"
#include "Insertion/VerifiedInsertionService.h"
#include "LanguageModel/LoopbackLanguageModel.h"
#include "Main/PasswordFieldSettingsModel.h"
#include "Main/RecogniserSettingsModel.h"
#include "Platform/Linux/Keys/StandInKeys.h"
#include "Platform/Linux/Session/DesktopAppearance.h"
#include "Platform/Linux/Session/DesktopNotice.h"
#include "Platform/Linux/Session/DesktopSettingsOpener.h"
#include "Platform/Linux/Session/TrayIcon.h"
#include "Platform/Linux/Session/XdgAutostart.h"
#include "Platform/Linux/Sound/PulseAudioEngine.h"
#include "Platform/Linux/Sound/PulsePreroll.h"
#include "Platform/Linux/System/JsonUserDefaults.h"
#include "Platform/Linux/System/LinuxAuthorizationSource.h"
#include "Platform/Linux/System/LinuxServerTrust.h"
#include "Platform/Linux/System/ProcessMemory.h"
#include "Platform/Linux/System/SystemLocaleSource.h"
#include "Platform/Linux/System/TimerFdClock.h"
#include "Platform/Linux/X11/Clipboard/XcbPasteboard.h"
#include "Platform/Linux/X11/Keys/XInput2EventMonitor.h"
#include "Platform/Linux/X11/Keys/XInputTrust.h"
#include "Platform/Linux/X11/Keys/XTestKeyEventPoster.h"
#include "Platform/Linux/X11/Windows/AtSpiFocusedField.h"
#include "Platform/Linux/X11/Windows/DesktopScreens.h"
#include "Platform/Linux/X11/Windows/DesktopShell.h"
#include "Platform/Linux/X11/Windows/FloatingCard.h"
#include "Platform/Linux/X11/Windows/XFrontmostFocus.h"
#include "Platform/Linux/X11/XSession.h"
#include "Settings/TalmoSettings.h"
#include "Speech/SpeechTranscriptionService.h"
#include "UI/Overlay/RecordingOverlayController.h"
#include "UI/Style/Wording.h"
#include "UI/UserInterface.h"

#include <QGuiApplication>

#include <utility>

namespace talmo {

namespace {

/// How long a dictation that is being finished may hold up the end of the program, or of the session.
constexpr Duration longestLastDictation = std::chrono::seconds(5);

QFuture<void> oneTurn(const std::shared_ptr<SerialExecutor> &executor)
{
    return executor->call([] {});
}

const char *lossNotice(SelectionReading::Loss loss)
{
    if (loss == SelectionReading::Loss::TooLarge) {
        return QT_TRANSLATE_NOOP("Talmo", "The clipboard held more than Talmo can keep, so part of it is gone.");
    }
    return QT_TRANSLATE_NOOP("Talmo", "Part of the clipboard is gone: its program did not hand it over in time.");
}

/// The recogniser is another one even where the choice cannot be saved; then whoever asked hears of that.
QCoro::Task<void> chooseRecogniser(std::shared_ptr<RecogniserSettingsModel> recogniser,
                                   std::shared_ptr<JsonUserDefaults> defaults, QString id)
{
    recogniser->choose(id);
    const auto saving = defaults->saved();
    co_await saving;
}

bool isApplicationActive()
{
    return QGuiApplication::focusWindow() != nullptr;
}

} // namespace

TalmoApp::TalmoApp()
    : m_mainExecutor(SerialExecutor::onCurrentThread()),
      m_speechExecutor(SerialExecutor::onNewThread(QStringLiteral("talmo-speech"))),
      m_recogniserExecutor(SerialExecutor::onNewThread(QStringLiteral("talmo-decoder"))),
      m_cleanupExecutor(SerialExecutor::onNewThread(QStringLiteral("talmo-cleanup"))),
      m_settingsExecutor(SerialExecutor::onNewThread(QStringLiteral("talmo-settings"))),
      m_clock(std::make_shared<TimerFdClock>()),
      m_defaults(JsonUserDefaults::ofThisUser(m_settingsExecutor)),
      m_linuxSettings(LinuxSettings::read(*m_defaults)),
      m_standInKeys(standInKeySymbols(m_linuxSettings.standInKeys)),
      m_languageModel(std::make_shared<LoopbackLanguageModel>(m_linuxSettings.languageModel, m_cleanupExecutor, m_clock,
                                                              std::make_shared<LinuxServerTrust>())),
      m_xSession(XSession::open()),
      m_eventMonitor(
          std::make_shared<XInput2EventMonitor>(m_xSession->postedKeys(), m_standInKeys, &isApplicationActive)),
      m_pasteboard(std::make_shared<XcbPasteboard>(m_xSession)),
      m_audioEngine(std::make_shared<PulseAudioEngine>()),
      m_recognisers(Recognisers::make(m_recogniserExecutor, m_clock,
                                      {engineOptions(), m_linuxSettings.speechEngine, &ProcessMemory::releaseFreed})),
      m_passwordFields(std::make_shared<PasswordFieldSettingsModel>(m_defaults)),
      m_locale(std::make_shared<SystemLocaleSource>(m_linuxSettings.dictationLanguage)),
      m_lastDictation(std::make_shared<LastDictation>()),
      m_recovery(std::make_shared<DictationRecovery>(m_lastDictation, m_pasteboard, m_pasteboard)),
      m_shell(std::make_shared<DesktopShell>([this] { Q_EMIT quitRequested(); })),
      m_screens(std::make_shared<DesktopScreens>())
{
    m_defaults->registerDefault(hotkeyDisplayNameKey(), keyDisplayName(m_standInKeys.first()));
    TalmoSettings::setSharedFactory([defaults = m_defaults] {
        return std::make_shared<TalmoSettings>(defaults, std::make_shared<XdgAutostart>(XdgAutostart::forThisSession(
                                                             QCoreApplication::applicationFilePath())));
    });
    TalmoCoordinator::setSharedFactory([this] { return makeCoordinator(); });
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

std::unique_ptr<TalmoCoordinator> TalmoApp::makeCoordinator()
{
    m_inputTrust = std::make_shared<XInputTrust>(m_xSession, m_eventMonitor);
    m_permissions = makePermissions();
    m_insertion = makeInsertion();
    m_recorder = std::make_shared<AudioRecorder>(m_audioEngine);
    m_transcription = std::make_shared<SpeechTranscriptionService>(m_recognisers.engines->platform(),
                                                                   std::make_shared<SpeexAudioConverterFactory>(),
                                                                   m_speechExecutor, m_mainExecutor);
    m_cleanup = std::make_shared<TextCleanupService>(m_cleanupExecutor, m_languageModel);
    m_interruptibleCleanup = std::make_shared<InterruptibleCleanupService>(
        m_cleanup, [model = m_languageModel] { model->cancelRequests(); }); // Else it would think on, for nobody.
    m_preroll = std::make_shared<PulsePreroll>(m_audioEngine, m_speechExecutor);
    const auto notice = std::make_shared<DictationNotice>();
    m_gestures = std::make_shared<DeferringHotkeyService>(DeferringHotkeyService::Parts{
        std::make_shared<GlobalHotkeyManager>(m_eventMonitor, m_inputTrust, m_clock, m_mainExecutor), m_preroll,
        m_interruptibleCleanup, notice, m_clock});

    CoordinatorParts parts;
    parts.permissions = m_permissions;
    parts.settings = TalmoSettings::shared();
    parts.audioRecorder = m_recorder;
    parts.transcriptionService = std::make_shared<RememberedTranscriptionService>(m_transcription, m_lastDictation);
    parts.hotkeyManager = m_gestures;
    parts.textCleanupService = std::make_shared<RememberedCleanupService>(m_interruptibleCleanup, m_lastDictation);
    parts.insertionService = m_insertion;
    parts.locale = m_locale;
    parts.clock = m_clock;
    parts.mainExecutor = m_mainExecutor;
    parts.makeOverlay = [screens = m_screens, notice](TalmoCoordinator &coordinator) {
        return std::make_unique<RecordingOverlayController>(coordinator, &FloatingCard::make, screens, notice);
    };
    auto coordinator = std::make_unique<TalmoCoordinator>(std::move(parts));
    m_gestures->follow(*coordinator);
    return coordinator;
}

std::shared_ptr<PermissionsManager> TalmoApp::makePermissions()
{
    const auto authorization = std::make_shared<LinuxAuthorizationSource>(
        [engine = m_audioEngine] { return engine->isAccessRefused(); },
        [engine = m_audioEngine, executor = m_speechExecutor] {
            return executor->call([engine] { return engine->askForAccess(); });
        });
    const auto permissions =
        std::make_shared<PermissionsManager>(authorization, m_inputTrust, std::make_shared<DesktopSettingsOpener>());
    // Let in again, Talmo must know before the next press is judged: nobody activates a program that has no window.
    m_audioEngine->setOnAccessChanged([weak = std::weak_ptr(permissions), executor = m_mainExecutor] {
        executor->post([weak] {
            if (const auto manager = weak.lock()) {
                manager->refresh();
            }
        });
    });
    return permissions;
}

/// One insertion at a time, with nothing of Talmo's in its way.
std::shared_ptr<TextInsertionService> TalmoApp::makeInsertion()
{
    const auto poster = std::make_shared<XTestKeyEventPoster>(m_xSession, m_pasteboard->transaction());
    const auto pasting = std::make_shared<ClipboardPasteInsertionService>(m_pasteboard, poster, m_inputTrust, m_clock);
    m_pasteboard->setOnLoss([](SelectionReading::Loss loss) { showDesktopNotice(Wording::text(lossNotice(loss))); });
    const auto verified = std::make_shared<VerifiedInsertionService>(pasting, m_pasteboard);
    const auto guarded =
        std::make_shared<PasswordFieldGuard>(verified, std::make_shared<AtSpiFocusedField>(m_xSession), m_clock,
                                             [fields = m_passwordFields] { return fields->isGuarded(); });
    const auto unobstructed = std::make_shared<UnobstructedInsertionService>(
        guarded, [this] { return m_interface ? m_interface->clearTheWay() : ready(); });
    return std::make_shared<QueuedInsertionService>(unobstructed);
}

void TalmoApp::start()
{
    auto &coordinator = TalmoCoordinator::shared();
    followState(coordinator);
    followDictionary();
    prepareOnPress();
    m_languageModel->refresh();
    m_delegate = std::make_unique<AppDelegate>(m_shell, m_permissions);
    m_delegate->applicationDidFinishLaunching();
    followActivation();
    showInterface(coordinator);
    listenForOthers();
}

void TalmoApp::showInterface(TalmoCoordinator &coordinator)
{
    m_recogniserSettings = std::make_shared<RecogniserSettingsModel>(
        m_recognisers.engines, m_recognisers.models, m_defaults, EngineFactories::standard(engineOptions()));
    m_trayIcon = std::make_shared<TrayIcon>();
    m_appearance =
        std::make_unique<DesktopAppearance>(m_linuxSettings.colourScheme, [weak = std::weak_ptr(m_trayIcon)] {
            if (const auto icon = weak.lock()) {
                icon->redraw();
            }
        });
    ViewContext context;
    context.coordinator = &coordinator;
    context.settings = TalmoSettings::shared();
    context.permissions = m_permissions;
    context.unavailabilityMessage = [cleanup = m_cleanup] { return cleanup->unavailabilityMessage(); };
    context.refreshAvailability = [model = m_languageModel] { return model->refresh(); };
    context.editingServer = [model = m_languageModel] {
        const auto server = model->server();
        return EditingServer{server.model, server.place, server.refused};
    };
    context.recogniser = m_recogniserSettings;
    context.recovery = m_recovery;
    context.passwordFields = m_passwordFields;
    UserInterfaceParts parts;
    parts.statusItem = m_trayIcon;
    parts.makePanelWindow = &FloatingCard::make;
    parts.screens = m_screens;
    parts.focus = std::make_shared<XFrontmostFocus>(m_clock);
    parts.shell = m_shell;
    m_interface = std::make_unique<UserInterface>(context, parts);
}

void TalmoApp::listenForOthers()
{
    ControlServer::Actions actions;
    actions.insert = [insertion = m_insertion](const QString &text) { return insertion->insert(text); };
    actions.openSettings = [this] { m_interface->openSettings(); };
    actions.chooseRecogniser = [recogniser = m_recogniserSettings, defaults = m_defaults](const QString &id) {
        return chooseRecogniser(recogniser, defaults, id);
    };
    actions.lastDictation = [recovery = m_recovery](bool isRaw) {
        return isRaw ? recovery->lastRawText() : recovery->lastText();
    };
    actions.putEarlierClipboardBack = [recovery = m_recovery] { return recovery->putEarlierClipboardBack(); };
    m_control = std::make_unique<ControlServer>(std::move(actions), m_clock);
    m_control->listen(ControlSocket::path());
}

void TalmoApp::followActivation()
{
    connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
        if (state == Qt::ApplicationActive) {
            m_delegate->applicationDidBecomeActive();
            logEscapes(askAgainIfDenied(m_permissions));
        }
    });
}

/// What the sound server refused once it may allow by now, and nothing but asking tells.
QCoro::Task<void> TalmoApp::askAgainIfDenied(std::shared_ptr<PermissionsManager> permissions)
{
    if (permissions->microphoneStatus() == SimpleStatus::Denied) {
        co_await permissions->requestMicrophonePermission();
    }
}

/// One line per state: it is what a person who reports a problem can say.
void TalmoApp::followState(TalmoCoordinator &coordinator)
{
    const auto lastState = std::make_shared<TalmoState>(coordinator.state());
    connect(
        &coordinator, &Observable::objectWillChange, this,
        [this, &coordinator, lastState] {
            if (*lastState == coordinator.state()) {
                return;
            }
            *lastState = coordinator.state();
            m_recognisers.engines->noteUse();
            generalLog().info("state: %s", {name(coordinator.state())});
        },
        Qt::QueuedConnection);
}

/// The recogniser hears the user's own words as soon as they are entered.
void TalmoApp::followDictionary()
{
    const auto settings = TalmoSettings::shared();
    const auto tell = [this, settings] { m_recognisers.engines->setWords(settings->dictionaryWords()); };
    connect(settings.get(), &Observable::objectWillChange, this, tell, Qt::QueuedConnection);
    tell();
}

/// Begins before the coordinator's own monitors, so that everything is being made ready while a hold is undecided.
void TalmoApp::prepareOnPress()
{
    m_preparation = std::make_unique<PressPreparation>(
        PressPreparation::Parts{m_eventMonitor, m_gestures, m_preroll, m_clock,
                                [speech = m_recognisers.engines, locale = m_locale, model = m_languageModel] {
                                    speech->warmUp(locale->currentIdentifier());
                                    model->refresh(); // The answer is there by the time that somebody has spoken.
                                }});
    m_preparation->start();
}

QCoro::Task<void> TalmoApp::shutDown()
{
    m_preparation.reset();
    m_control.reset();
    m_interface.reset();
    m_trayIcon.reset();
    if (m_gestures) {
        m_gestures->close();
    }
    // What has been spoken still arrives.
    const auto finishing = finishDictation();
    const bool isFinished = co_await finishing;
    if (const QString text = TalmoCoordinator::shared().liveTranscript(); !isFinished && !text.isEmpty()) {
        co_await keepOnClipboard(m_cleanup, m_pasteboard, text);
    }
    if (m_recorder) {
        m_recorder->stop();
    }
    if (const auto transcription = m_transcription) {
        co_await transcription->cancelTranscription();
    }
    m_recognisers.models->cancel();
    co_await m_pasteboard->shutDown();
    co_await m_languageModel->shutDown();
    co_await m_defaults->written();
    m_clock->cancelAll();
    // Every thread gets its turns to let go of what the cancelled waits held.
    constexpr int rounds = 2;
    for (int round = 0; round < rounds; ++round) {
        co_await oneTurn(m_recogniserExecutor);
        co_await oneTurn(m_speechExecutor);
        co_await oneTurn(m_cleanupExecutor);
        co_await oneTurn(m_mainExecutor);
    }
}

QFuture<bool> TalmoApp::finishDictation()
{
    return m_gestures ? m_gestures->finishDictation(longestLastDictation) : ready(true);
}

/// There was no time to insert it: what is known of the sentence goes where the user can find it.
QCoro::Task<void> TalmoApp::keepOnClipboard(std::shared_ptr<CleanupService> cleanup,
                                            std::shared_ptr<Pasteboard> pasteboard, QString text)
{
    const QString formatted = co_await cleanup->cleanup(text, false, false, TextTone::Standard, {});
    generalLog().info("no time was left to insert the last sentence; it is on the clipboard");
    pasteboard->clearContents();
    pasteboard->setString(formatted);
}

} // namespace talmo
