// Pictures of every state of the user interface, light and dark, at ordinary and high resolution, for visual review.
//
//   talmo-pictures FOLDER

#include "Platform/Linux/System/LinuxWording.h"
#include "Support/FakeDictationOptions.h"
#include "Support/FakeHotkeySettings.h"
#include "Support/FakeLanguageSettings.h"
#include "Support/FakeMicrophoneSettings.h"
#include "Support/FakePasswordFieldSettings.h"
#include "Support/FakePasteboard.h"
#include "Support/FakePronunciations.h"
#include "Support/FakeRecogniserSettings.h"
#include "UI/Gallery.h"
#include "UI/Menu/MenuBarView.h"
#include "UI/Overlay/RecordingOverlay.h"
#include "UI/Settings/SettingsTabBar.h"
#include "UI/Settings/SettingsView.h"
#include "UI/Settings/WelcomeView.h"
#include "UI/Settings/Words/WordList.h"
#include "UI/Style/Appearance.h"
#include "UI/ViewWorld.h"

#include <QApplication>
#include <QDir>

#include <cstdio>

namespace talmo::test {

namespace {

const QString heard =
    u"thank you very much for the report I will read it on the train and call you as soon as I am back "
    u"in the office on monday"_s;

/// Calls `add` with a name for every state of the coordinator.
template <typename Add>
void inEveryState(ViewWorld &world, Add add)
{
    world.settings->setHotkeyDisplayName(u"Right Ctrl"_s);
    settle();
    add(u"idle"_s);
    world.beRecording();
    add(u"listening"_s);
    world.hear(u"thank you"_s);
    add(u"listening-short"_s);
    world.hear(heard);
    add(u"listening-long"_s);
    world.coordinator().endDictation();
    settle();
}

/// An error that is too long for two lines.
void addLongError(Gallery &gallery)
{
    ViewWorld world;
    RecordingOverlay overlay(world.coordinator());
    MenuBarView menu(world.context(), [](MenuAction) {});
    world.fail(u"The file on the server is not the one that Talmo knows; its maker has probably renewed it. Update "
               u"Talmo, or choose another model in its settings."_s);
    gallery.addCard(overlay, u"overlay-long-error"_s);
    gallery.addCard(menu, u"menu-long-error"_s);
    menu.setDetailed(true);
    gallery.addCard(menu, u"menu-long-error-details"_s);
}

/// The recogniser's page.
void addRecogniser(Gallery &gallery, FakeRecogniserSettings &recogniser, SettingsView &settings)
{
    settings.showRecogniser();
    const auto show = [&](const QString &name) {
        recogniser.change();
        settle();
        gallery.addWindow(settings, u"settings-recogniser-"_s + name);
    };
    show(u"rest"_s);
    const auto choices = recogniser.allChoices;
    recogniser.allChoices[0].title = u"Recommended"_s;
    recogniser.allLiveChoices = {{u"automatic"_s, u"Recommended"_s}};
    show(u"live-and-final"_s);
    recogniser.allChoices = choices;
    recogniser.allLiveChoices.clear();
    recogniser.offered = {u"Kroko (English), 67 MB. Licences: Apache-2.0, CC-BY-SA-4.0."_s, u"67 MB"_s};
    show(u"offer"_s);
    recogniser.underWay = {u"zipformer-en"_s, u"Downloading: 12 of 67 MB, 3.0 MB/s, 18 s left"_s, 0.18};
    show(u"installing"_s);
    recogniser.underWay = std::nullopt;
    recogniser.wrongInstallation = u"Not enough disk space: 310 MB needed, 12 MB free."_s;
    show(u"failed"_s);
    recogniser.wrongInstallation.clear();
    recogniser.offered = std::nullopt;
    recogniser.wrongLibrary =
        u"These models need the library of sherpa-onnx, which is not where the settings say, or does not exist for "
        "this computer. Remove linux.neuralLibrary from Talmo's settings file to have it downloaded."_s;
    show(u"without-library"_s);
}

/// The panel while better recognition is offered, and while it is being installed.
void addOffer(Gallery &gallery)
{
    ViewWorld world;
    const auto recogniser = std::make_shared<FakeRecogniserSettings>();
    world.recogniser = recogniser;
    recogniser->offered = {u"Kroko (English), 67 MB. Licences: Apache-2.0, CC-BY-SA-4.0."_s, u"67 MB"_s};
    MenuBarView menu(world.context(), [](MenuAction) {});
    gallery.addCard(menu, u"menu-offer"_s);
    recogniser->underWay = {u"kroko-en"_s, u"Downloading: 12 of 67 MB, 3.0 MB/s, 18 s left"_s, 0.18};
    recogniser->change();
    settle();
    gallery.addCard(menu, u"menu-installing"_s);
}

/// The first page with a working server, with editing disabled, and with a refused server.
void addServers(Gallery &gallery)
{
    ViewWorld world;
    world.settings->setHotkeyDisplayName(u"Right Ctrl"_s);
    SettingsView settings(world.context());
    const auto show = [&](const QString &name) {
        settings.refresh();
        settle();
        gallery.addWindow(settings, u"settings-server-"_s + name);
    };
    world.server = {u"qwen2.5:7b-instruct-q4_K_M"_s, u"127.0.0.1:11434"_s, {}};
    show(u"used"_s);
    world.settings->setAiCleanupEnabled(false);
    show(u"off"_s);
    world.settings->setAiCleanupEnabled(true);
    world.server = {{}, {}, {u"127.0.0.1:8080"_s}};
    world.unavailability = u"The on-device language model isn't available right now."_s;
    show(u"refused"_s);
}

/// A hands-free recording, what is left on the card after it was discarded, and the menu of a paused Talmo.
void addKeys(Gallery &gallery)
{
    ViewWorld world;
    world.pause = std::make_shared<DictationPause>();
    world.pause->setPaused(true);
    MenuBarView menu(world.context(), [](MenuAction) {});
    gallery.addCard(menu, u"menu-paused"_s);
    const auto notice = std::make_shared<DictationNotice>();
    RecordingOverlay overlay(world.coordinator(), notice);
    notice->setHint(u"%1: stop · Esc: discard"_s, u"Right Ctrl"_s);
    world.beRecording();
    gallery.addCard(overlay, u"overlay-hands-free"_s);
    world.hear(heard);
    gallery.addCard(overlay, u"overlay-hands-free-long"_s);
    world.coordinator().cancelDictation();
    notice->setFarewell(u"Cancelled"_s);
    settle();
    gallery.addCard(overlay, u"overlay-cancelled"_s);
}

/// What a new user sees, and the sections for the key, the microphone and the language with what can go wrong.
void addFirstMinutes(Gallery &gallery)
{
    ViewWorld world;
    world.settings->setHotkeyDisplayName(u"Right Ctrl"_s);
    const auto microphone = std::make_shared<FakeMicrophoneSettings>();
    const auto hotkeys = std::make_shared<FakeHotkeySettings>();
    const auto language = std::make_shared<FakeLanguageSettings>();
    const auto recogniser = std::make_shared<FakeRecogniserSettings>();
    world.microphone = microphone;
    world.hotkeys = hotkeys;
    world.language = language;
    world.recogniser = recogniser;
    hotkeys->suggested = HotkeySettings::Key{u"F9"_s, u"F9"_s};
    recogniser->offered = {u"Kroko (English), 67 MB. Licences: Apache-2.0, CC-BY-SA-4.0."_s, u"67 MB"_s};
    constexpr QSize tall(540, 860);
    {
        WelcomeView welcome(world.context(), [] {});
        microphone->beLoud(0.62);
        gallery.addWindow(welcome, u"welcome"_s, QSize(540, welcome.idealHeight(540)));
        gallery.addWindow(welcome, u"welcome-low-screen"_s, QSize(540, 600));
        world.setPermissions(true, true, false);
        microphone->all = {{QString(), u"System default"_s}};
        microphone->wrong = u"No microphone was found. Plug one in, or enable one in the desktop's sound settings."_s;
        microphone->isThere = false;
        language->wrong = u"Dictating in German needs another recogniser."_s;
        recogniser->underWay = {u"kroko-de"_s, u"Downloading: 12 of 67 MB, 3.0 MB/s, 18 s left"_s, 0.18};
        microphone->beLoud(0);
        microphone->change();
        language->change();
        recogniser->change();
        settle();
        gallery.addWindow(welcome, u"welcome-problems"_s, QSize(540, welcome.idealHeight(540)));
    }
    world.setPermissions(true, true, true);
    recogniser->underWay = std::nullopt;
    SettingsView settings(world.context());
    settings.findChild<QTabBar *>()->setCurrentIndex(2);
    gallery.addWindow(settings, u"settings-privacy-no-microphone"_s);
    settings.findChild<QTabBar *>()->setCurrentIndex(0);
    gallery.addWindow(settings, u"settings-first-problems"_s, tall);
    microphone->isThere = true;
    microphone->all = {{QString(), u"System default (Built-in Audio)"_s}, {u"headset"_s, u"Jabra Evolve 65"_s}};
    microphone->wrong.clear();
    language->wrong.clear();
    hotkeys->suggested = std::nullopt;
    hotkeys->all = {{u"Control_R"_s, u"Right Ctrl"_s}, {u"F9"_s, u"F9"_s}};
    microphone->setListening(true);
    microphone->beLoud(0.7);
    language->change();
    hotkeys->change();
    settle();
    gallery.addWindow(settings, u"settings-first-listening"_s, tall);
    hotkeys->beginCapture(HotkeySettings::Capture::Add);
    hotkeys->wrong = u"“A” types text, so it cannot be held. Choose a key that types nothing, such as F9."_s;
    settle();
    gallery.addWindow(settings, u"settings-first-capturing"_s, tall);
}

/// The words with pronunciations, and the kept dictations.
void addLists(Gallery &gallery)
{
    ViewWorld world;
    world.settings->setDictionaryWords(
        {u"Talmo"_s, u"Terraform"_s, u"CloudFormation"_s, u"Kubernetes"_s, u"Nguyen"_s, u"Siobhán"_s});
    const auto pronunciations = std::make_shared<FakePronunciations>();
    pronunciations->sounds = {{u"Nguyen"_s, u"win"_s}, {u"Siobhán"_s, u"shiv awn"_s}};
    world.pronunciations = pronunciations;
    const auto options = std::make_shared<FakeDictationOptions>();
    options->values[DictationOption::KeepHistory] = true;
    world.options = options;
    world.passwordFields = std::make_shared<FakePasswordFieldSettings>();
    auto context = world.context();
    context.history = std::make_shared<DictationHistory>(options);
    context.recovery = std::make_shared<DictationRecovery>(std::make_shared<LastDictation>(),
                                                           std::make_shared<FakePasteboard>(), nullptr);
    for (const auto &text : {heard, u"See you tomorrow."_s, u"Dear Ann,\nthank you for the pictures."_s}) {
        context.history->add(text);
    }
    SettingsView settings(context);
    settings.findChild<QTabBar *>()->setCurrentIndex(1);
    settings.findChild<WordList *>()->setCurrentRow(4);
    gallery.addWindow(settings, u"settings-words"_s);
    settings.findChild<QTabBar *>()->setCurrentIndex(2);
    gallery.addWindow(settings, u"settings-history"_s);
}

/// The overlay and the menu in every state of the coordinator.
void addStates(Gallery &gallery)
{
    ViewWorld world;
    RecordingOverlay overlay(world.coordinator());
    MenuBarView menu(world.context(), [](MenuAction) {});
    const auto add = [&](const QString &name) {
        if (name != u"idle"_s) {
            gallery.addCard(overlay, u"overlay-"_s + name);
        }
        gallery.addCard(menu, u"menu-"_s + name);
    };
    inEveryState(world, add);
}

/// The same at moments that are no states of their own.
void addMoments(Gallery &gallery)
{
    for (const auto &state : {u"cleaning-up"_s, u"inserting"_s, u"error"_s, u"permissions"_s}) {
        ViewWorld world;
        RecordingOverlay overlay(world.coordinator());
        MenuBarView menu(world.context(), [](MenuAction) {});
        if (state == u"cleaning-up"_s) {
            world.beProcessing();
        } else if (state == u"inserting"_s) {
            world.beInserting();
        } else if (state == u"error"_s) {
            world.fail(u"No microphone input is available."_s);
        } else {
            world.setPermissions(false, true, false);
        }
        if (state != u"permissions"_s) {
            gallery.addCard(overlay, u"overlay-"_s + state);
        }
        gallery.addCard(menu, u"menu-"_s + state);
    }
}

/// Transcripts that are hard to lay out.
void addTranscripts(Gallery &gallery)
{
    for (const auto &text :
         {std::pair(u"hebrew"_s, u"אני רוצה לקנות חלב וביצים ואחר כך ללכת הביתה כדי לקרוא ספר טוב"_s),
          std::pair(u"emoji"_s, u"that was great 🎉🎉 see you 👩‍👩‍👧‍👦 tomorrow"_s),
          std::pair(u"long-word"_s,
                    u"Donaudampfschifffahrtsgesellschaftskapitänsmützenabzeichenverleihungszeremonienmeister"_s)}) {
        ViewWorld world;
        RecordingOverlay overlay(world.coordinator());
        world.beRecording();
        world.hear(text.second);
        gallery.addCard(overlay, u"overlay-"_s + text.first);
    }
}

/// The tabs of the settings.
void addSettings(Gallery &gallery)
{
    ViewWorld world;
    world.settings->setHotkeyDisplayName(u"Right Ctrl"_s);
    world.unavailability =
        u"Apple Intelligence isn't turned on. Enable it in System Settings > Apple Intelligence & Siri to use AI cleanup."_s;
    world.setPermissions(true, true, false);
    const auto recogniser = std::make_shared<FakeRecogniserSettings>();
    world.recogniser = recogniser;
    const auto options = std::make_shared<FakeDictationOptions>();
    options->values[DictationOption::SpaceBetween] = true;
    world.options = options;
    SettingsView settings(world.context());
    auto *tabs = settings.findChild<QTabBar *>();
    for (int index = 0; index < tabs->count(); ++index) {
        tabs->setCurrentIndex(index);
        gallery.addWindow(settings, u"settings-"_s + tabs->tabText(index).toLower());
    }
    addRecogniser(gallery, *recogniser, settings);
}

void takePictures(const QDir &folder, const Look &look)
{
    Gallery gallery(folder, look);
    gallery.addIcons();
    gallery.addTrayIcons();
    addKeys(gallery);
    addLongError(gallery);
    addLists(gallery);
    addFirstMinutes(gallery);
    addStates(gallery);
    addMoments(gallery);
    addTranscripts(gallery);
    addSettings(gallery);
    addOffer(gallery);
    addServers(gallery);
}

} // namespace

} // namespace talmo::test

int main(int argc, char **argv)
{
    using namespace talmo::test;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    talmo::installWording();
    const QStringList arguments = QApplication::arguments();
    const QDir folder(arguments.value(1, u"."_s));
    folder.mkpath(u"."_s);
    try {
        using talmo::ColourScheme;
        for (const auto scheme : {ColourScheme::Light, ColourScheme::Dark}) {
            for (const qreal ratio : {1.0, 2.0}) {
                takePictures(folder, {scheme, ratio});
            }
        }
        takePictures(folder, {ColourScheme::Light, 1.5});
        takePictures(folder, {ColourScheme::Light, 1.0, 20});
        takePictures(folder, {ColourScheme::Dark, 1.0, 10, Qt::RightToLeft});
    } catch (const talmo::Error &error) {
        std::fprintf(stderr, "%s\n", qPrintable(error.localizedDescription()));
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
