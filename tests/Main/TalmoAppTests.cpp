#include "Main/TalmoApp.h"

#include "Support/FakeCancelKey.h"
#include "Support/FakeCursorWatch.h"
#include "Support/FakeEventMonitor.h"
#include "Support/FakePasteboard.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"
#include "UI/ViewWorld.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace talmo::test {

namespace {

class UnknownField final : public FocusedField {
public:
    QFuture<bool> isPassword(Duration) override { return makeReadyFuture(false); }
};

class EveryPasteIsTaken final : public PasteWitness {
public:
    QFuture<PasteReceipt> receipt() override { return makeReadyFuture(PasteReceipt()); }
    bool holdsEarlierClipboard() const override { return false; }
    QFuture<bool> putEarlierClipboardBack() override { return makeReadyFuture(false); }
};

QCoro::Task<void> note(QCoro::Task<void> task, bool *isDone)
{
    co_await task;
    *isDone = true;
}

/// A fake desktop, for a user without settings, sound or a model server.
class TalmoAppTest : public testing::Test {
protected:
    TalmoAppTest()
    {
        for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"}) {
            qputenv(name, home.path().toUtf8());
        }
        qputenv("PULSE_SERVER", "unix:/nonexistent");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent"); // The user's own Talmo may be there.
        QDir(home.path()).mkdir(u"talmo"_s);
        storeSettings(R"({"linux.languageModelAddress": "off", "linux.welcomeShown": true})");
    }
    void storeSettings(const QByteArray &json) const
    {
        QFile settings(home.filePath(u"talmo/settings.json"_s));
        EXPECT_TRUE(settings.open(QFile::WriteOnly));
        settings.write(json);
    }
    /// Whether the welcome was open once Talmo had started.
    bool isWelcomedByAStart()
    {
        TalmoApp app([this](const DesktopOptions &options) { return madeUpDesktop(options); });
        app.start();
        settle();
        const auto windows = QApplication::topLevelWidgets();
        const bool isShown = std::any_of(windows.begin(), windows.end(), [](const QWidget *window) {
            return window->isVisible() && window->windowTitle() == u"Welcome to Talmo"_s;
        });
        bool isDone = false;
        logEscapes(note(app.shutDown(), &isDone));
        EXPECT_TRUE(waitFor([&isDone] { return isDone; }));
        return isShown;
    }
    TalmoApp::OpenDesktop opener()
    {
        return [this](const DesktopOptions &options) { return madeUpDesktop(options); };
    }
    static void shutDown(TalmoApp &app)
    {
        bool isDone = false;
        logEscapes(note(app.shutDown(), &isDone));
        EXPECT_TRUE(waitFor([&isDone] { return isDone; }));
    }
    Desktop madeUpDesktop(const DesktopOptions &options)
    {
        quit = options.quit;
        Desktop desktop;
        desktop.hotkeyName = u"Moon"_s;
        desktop.eventMonitor = keys;
        desktop.cancelKey = std::make_shared<FakeCancelKey>();
        desktop.pasteboard = pasteboard;
        desktop.pasteWitness = std::make_shared<EveryPasteIsTaken>();
        desktop.keyPoster = std::make_shared<FakeKeyEventPoster>(pasteboard->calls);
        desktop.inputTrust = std::make_shared<FakeInputTrust>();
        desktop.focusedField = std::make_shared<UnknownField>();
        desktop.cursorWatch = std::make_shared<FakeCursorWatch>();
        desktop.makePanelWindow = panels.factory();
        desktop.screens = std::make_shared<FakeScreens>();
        desktop.statusItem = icon;
        desktop.focus = std::make_shared<FakeFocus>(panels.calls);
        desktop.shell = std::make_shared<FakeShell>();
        desktop.shutDown = [this] {
            isShutDown = true;
            return makeReadyFuture();
        };
        return desktop;
    }

    QTemporaryDir home;
    FakePanels panels;
    std::shared_ptr<FakeEventMonitor> keys = std::make_shared<FakeEventMonitor>();
    std::shared_ptr<FakePasteboard> pasteboard = std::make_shared<FakePasteboard>();
    std::shared_ptr<FakeStatusItem> icon = std::make_shared<FakeStatusItem>();
    std::function<void()> quit;
    bool isShutDown = false;
};

} // namespace

TEST_F(TalmoAppTest, startsAndEndsOnAnyDesktop)
{
    TalmoApp app(opener());
    app.start();
    EXPECT_EQ(TalmoSettings::shared()->hotkeyDisplayName(), u"Moon"_s);
    EXPECT_FALSE(icon->symbols.empty());
    keys->press();
    EXPECT_TRUE(waitFor([] { return TalmoCoordinator::shared().state().is(TalmoState::Case::Error); }));
    keys->release();
    bool hasQuit = false;
    QObject::connect(&app, &TalmoApp::quitRequested, &app, [&hasQuit] { hasQuit = true; });
    quit();
    EXPECT_TRUE(hasQuit);
    shutDown(app);
    EXPECT_TRUE(isShutDown);
}

TEST_F(TalmoAppTest, welcomesANewUserOnce)
{
    storeSettings(R"({"linux.languageModelAddress": "off"})");
    EXPECT_TRUE(isWelcomedByAStart());
    EXPECT_FALSE(isWelcomedByAStart());
}

TEST_F(TalmoAppTest, menuStartsRecordingAsTheKeyDoes)
{
    TalmoApp app(opener());
    app.start();
    const auto finishing = app.finishDictation();
    icon->onChosen(MenuAction::BeginDictation); // Nothing begins any more, whatever asks for it.
    EXPECT_TRUE(waitFor(finishing));
    EXPECT_EQ(TalmoCoordinator::shared().state(), TalmoState::idle());
    icon->onChosen(MenuAction::BeginDictation);
    EXPECT_TRUE(waitFor([] { return TalmoCoordinator::shared().state().is(TalmoState::Case::Error); }));
    shutDown(app);
}

} // namespace talmo::test
