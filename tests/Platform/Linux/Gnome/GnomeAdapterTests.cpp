// The adapters with Talmo's extension in a real GNOME Shell. tests/Gnome/run starts that, and these tests in it.

#include "Contract/EventMonitorContract.h"
#include "Platform/Linux/Gnome/GnomeExtension.h"
#include "Platform/Linux/Gnome/GnomeExtensionStatus.h"
#include "Platform/Linux/Gnome/GnomeFocusedField.h"
#include "Platform/Linux/Gnome/GnomeKeys.h"
#include "Platform/Linux/Gnome/GnomeTextCommitter.h"
#include "Support/FakeCancelKey.h"
#include "Support/FakeEventMonitor.h"
#include "Support/FakeFocusedField.h"
#include "Support/TestLoop.h"

#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;
using testing::IsEmpty;
using State = GnomeExtension::State;

namespace {

const QString shell = QStringLiteral("org.gnome.Shell");

QDBusMessage call(const QString &service, const QString &path, const QString &interface, const QString &method,
                  const QVariantList &arguments = {})
{
    auto message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    return QDBusConnection::sessionBus().call(message, QDBus::BlockWithGui);
}

QString evaluate(const QString &code)
{
    const auto answer = call(shell, QStringLiteral("/org/gnome/Shell"), shell, QStringLiteral("Eval"), {code});
    EXPECT_TRUE(answer.arguments().value(0).toBool()) << answer.arguments().value(1).toString().toStdString();
    return answer.arguments().value(1).toString();
}

void switchExtension(const char *method)
{
    const QString version = QStringLiteral("43");
    call(shell, QStringLiteral("/org/gnome/Shell"), QStringLiteral("org.gnome.Shell.Extensions"),
         QString::fromLatin1(method), {GnomeExtension::identifierFor(version)});
}

/// Types on a keyboard of the session.
class Keyboard {
public:
    static constexpr uint rightCtrl = 97;
    static constexpr uint escape = 1;

    Keyboard()
    {
        const auto answer =
            call(service, QStringLiteral("/org/gnome/Mutter/RemoteDesktop"), service, QStringLiteral("CreateSession"));
        m_path = answer.arguments().value(0).value<QDBusObjectPath>().path();
        call(service, m_path, service + QStringLiteral(".Session"), QStringLiteral("Start"));
    }
    ~Keyboard() { call(service, m_path, service + QStringLiteral(".Session"), QStringLiteral("Stop")); }
    Keyboard(const Keyboard &) = delete;
    Keyboard &operator=(const Keyboard &) = delete;

    void move(uint key, bool isDown)
    {
        call(service, m_path, service + QStringLiteral(".Session"), QStringLiteral("NotifyKeyboardKeycode"),
             {key, isDown});
    }
    void tap(uint key)
    {
        move(key, true);
        move(key, false);
    }

private:
    const QString service = QStringLiteral("org.gnome.Mutter.RemoteDesktop");
    QString m_path;
};

struct GnomeSubject {
    GnomeSubject()
    {
        switchExtension("EnableExtension");
        EXPECT_TRUE(waitFor([this] { return gnome->isAvailable(); }));
    }
    static bool isPossible() { return qEnvironmentVariableIsSet("TALMO_GNOME_SESSION"); }
    void awaitKeys() { EXPECT_TRUE(waitFor(gnome->focus())); } // By then the shell watches them.
    void press() { keyboard.move(Keyboard::rightCtrl, true); }
    void release() { keyboard.move(Keyboard::rightCtrl, false); }
    void setActive(bool active) { isActive = active; }

    Keyboard keyboard;
    bool isActive = false;
    std::shared_ptr<GnomeShell> gnome = GnomeShell::open(GnomeShell::NameWait::Queue);
    GnomeKeys monitor{gnome, QStringList{QStringLiteral("Control_R")},
                      GnomeKeys::Otherwise{std::make_shared<FakeEventMonitor>(), std::make_shared<FakeCancelKey>()},
                      [this] { return isActive; }};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Gnome, EventMonitorContract, GnomeSubject);

class GnomeAdapterTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (!qEnvironmentVariableIsSet("TALMO_GNOME_SESSION")) {
            GTEST_SKIP() << "not started by tests/Gnome/run";
        }
        switchExtension("EnableExtension");
        gnome = GnomeShell::open(GnomeShell::NameWait::Queue);
        ASSERT_NE(gnome, nullptr);
        ASSERT_TRUE(waitFor([this] { return gnome->isAvailable(); }));
        keys.emplace(gnome, QStringList{QStringLiteral("Control_R")},
                     GnomeKeys::Otherwise{otherMonitor, otherCancelKey}, [this] { return isActive; });
        global = keys->addGlobalMonitor(GlobalHotkeyManager::flagsChangedMask, [this](const FlagsChangedEvent &event) {
            events.push_back(event.modifierFlags != 0);
        });
        local = keys->addLocalMonitor(GlobalHotkeyManager::flagsChangedMask, [this](const FlagsChangedEvent &event) {
            localEvents.push_back(event.modifierFlags != 0);
            return std::optional(event);
        });
        answerOf(gnome->focus()); // By then the shell watches the keys.
    }

    template <typename T>
    static T answerOf(QFuture<T> future)
    {
        EXPECT_TRUE(waitFor(future));
        return future.result();
    }
    bool waitForEvents(std::size_t count)
    {
        return waitFor([this, count] { return events.size() >= count; });
    }
    void openWindow(const QString &kind)
    {
        window.start(QStringLiteral("/usr/bin/python3"),
                     {QStringLiteral(TALMO_TESTS_FOLDER "/Gnome/text_window.py"), kind});
        ASSERT_TRUE(waitFor([this] { return answerOf(gnome->focus()).process == window.processId(); }));
    }
    void TearDown() override
    {
        window.kill();
        window.waitForFinished();
    }

    std::shared_ptr<FakeEventMonitor> otherMonitor = std::make_shared<FakeEventMonitor>();
    std::shared_ptr<FakeCancelKey> otherCancelKey = std::make_shared<FakeCancelKey>();
    std::shared_ptr<GnomeShell> gnome;
    std::optional<GnomeKeys> keys;
    bool isActive = false;
    std::vector<bool> events;
    std::vector<bool> localEvents;
    std::shared_ptr<EventMonitorToken> global;
    std::shared_ptr<EventMonitorToken> local;
    Keyboard keyboard;
    QProcess window;
};

} // namespace

TEST_F(GnomeAdapterTest, reportsPressAndReleaseToGlobalMonitor)
{
    keyboard.move(Keyboard::rightCtrl, true);
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre(true));
    keyboard.move(Keyboard::rightCtrl, false);
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre(true, false));
    EXPECT_THAT(localEvents, IsEmpty());
}

TEST_F(GnomeAdapterTest, reportsToLocalMonitorWhileTalmoIsActive)
{
    isActive = true;
    keyboard.tap(Keyboard::rightCtrl);
    ASSERT_TRUE(waitFor([this] { return localEvents.size() == 2; }));
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(GnomeAdapterTest, releasesHeldKeyWhenExtensionGoes)
{
    keyboard.move(Keyboard::rightCtrl, true);
    ASSERT_TRUE(waitForEvents(1));
    switchExtension("DisableExtension");
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre(true, false));
    keyboard.move(Keyboard::rightCtrl, false);
}

TEST_F(GnomeAdapterTest, watchesKeysAgainWhenExtensionReturns)
{
    switchExtension("DisableExtension");
    ASSERT_TRUE(waitFor([this] { return !gnome->isAvailable(); }));
    switchExtension("EnableExtension");
    ASSERT_TRUE(waitFor([this] { return gnome->isAvailable(); }));
    answerOf(gnome->focus());
    keyboard.tap(Keyboard::rightCtrl);
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre(true, false));
}

TEST_F(GnomeAdapterTest, otherMonitorCountsOnlyWithoutExtension)
{
    otherMonitor->press();
    otherMonitor->release();
    EXPECT_THAT(events, IsEmpty());
    switchExtension("DisableExtension");
    ASSERT_TRUE(waitFor([this] { return !gnome->isAvailable(); }));
    otherMonitor->press();
    EXPECT_THAT(events, ElementsAre(true));
}

TEST_F(GnomeAdapterTest, escapeCancelsWhileDictationKeyIsHeldAndGrabbed)
{
    int presses = 0;
    keyboard.move(Keyboard::rightCtrl, true);
    ASSERT_TRUE(waitForEvents(1));
    ASSERT_TRUE(keys->grab([&presses] { ++presses; }));
    answerOf(gnome->focus());
    keyboard.tap(Keyboard::escape);
    EXPECT_TRUE(waitFor([&presses] { return presses == 1; }));
    keyboard.move(Keyboard::rightCtrl, false);
    EXPECT_TRUE(waitForEvents(2));
    keyboard.tap(Keyboard::escape);
    EXPECT_TRUE(waitFor([&presses] { return presses == 2; }));
    keys->release();
    answerOf(gnome->focus());
    keyboard.tap(Keyboard::escape);
    keyboard.tap(Keyboard::rightCtrl);
    EXPECT_TRUE(waitForEvents(4));
    EXPECT_EQ(presses, 2);
}

TEST_F(GnomeAdapterTest, commitsTextToFieldAndNoneToWindowWithout)
{
    openWindow(QStringLiteral("text"));
    GnomeTextCommitter committer(gnome);
    const QString text = QStringLiteral("committed");
    ASSERT_TRUE(waitFor([&] { return answerOf(committer.commit(text)); })); // Once the window has told of its field.
    EXPECT_TRUE(waitFor([this] { return window.bytesAvailable() > 0 && window.peek(4096).contains("committed"); }));
    switchExtension("DisableExtension");
    ASSERT_TRUE(waitFor([this] { return !gnome->isAvailable(); }));
    EXPECT_FALSE(answerOf(committer.commit(text)));
}

TEST_F(GnomeAdapterTest, recognisesPasswordField)
{
    GnomeFocusedField field(gnome, std::make_shared<FakeFocusedField>());
    openWindow(QStringLiteral("password"));
    EXPECT_TRUE(waitFor([&field] { return answerOf(field.isPassword(std::chrono::seconds(1))); }));
}

TEST_F(GnomeAdapterTest, textFieldIsNoPasswordField)
{
    GnomeFocusedField field(gnome, std::make_shared<FakeFocusedField>());
    openWindow(QStringLiteral("text"));
    EXPECT_FALSE(answerOf(field.isPassword(std::chrono::seconds(1))));
}

TEST_F(GnomeAdapterTest, recognisesTerminalByItsWindow)
{
    openWindow(QStringLiteral("terminal"));
    EXPECT_EQ(answerOf(gnome->front()).style, PasteStyle::ControlShiftV);
}

TEST_F(GnomeAdapterTest, secondProgramDoesNotGetTheName)
{
    const auto other = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("other"));
    const auto taken = other.interface()->registerService(QStringLiteral("io.github.talmo.Talmo"),
                                                          QDBusConnectionInterface::DontQueueService);
    EXPECT_EQ(taken.value(), QDBusConnectionInterface::ServiceNotRegistered);
    QDBusConnection::disconnectFromBus(QStringLiteral("other"));
}

TEST_F(GnomeAdapterTest, enablesExtension)
{
    GnomeExtension extension;
    EXPECT_EQ(answerOf(extension.state()), State::Enabled);
    switchExtension("DisableExtension");
    EXPECT_TRUE(waitFor([&extension] { return answerOf(extension.state()) == State::Disabled; }));
    EXPECT_EQ(answerOf(extension.enable()), State::Enabled);
}

TEST_F(GnomeAdapterTest, reportsThatAllExtensionsAreDisabled)
{
    GnomeExtension extension;
    const auto switchAll = [](const char *value) {
        evaluate(
            QStringLiteral("global.settings.set_boolean('disable-user-extensions', %1)").arg(QLatin1String(value)));
    };
    switchAll("true");
    EXPECT_TRUE(waitFor([&extension] { return answerOf(extension.state()) == State::AllDisabled; }));
    EXPECT_EQ(answerOf(extension.enable()), State::AllDisabled);
    switchAll("false");
    EXPECT_TRUE(waitFor([&extension] { return answerOf(extension.state()) == State::Enabled; }));
}

TEST_F(GnomeAdapterTest, newlyInstalledExtensionNeedsLogin)
{
    GnomeExtension extension;
    const QString known = QStringLiteral("Main.extensionManager._extensions");
    const QString identifier = GnomeExtension::identifierFor(QStringLiteral("43"));
    evaluate(QStringLiteral("window.talmo = %1.get('%2'); %1.delete('%2'); 1").arg(known, identifier));
    evaluate(QStringLiteral("global.settings.set_strv('enabled-extensions', ['other@example.org']); 1"));
    EXPECT_TRUE(waitFor([&extension] { return answerOf(extension.state()) == State::Disabled; }));
    EXPECT_EQ(answerOf(extension.enable()), State::NeedsLogin);
    const QString all = QStringLiteral("[\"other@example.org\",\"%1\"]").arg(identifier);
    EXPECT_TRUE(
        waitFor([&all] { return evaluate(QStringLiteral("global.settings.get_strv('enabled-extensions')")) == all; }));
    qputenv("XDG_DATA_HOME", "/nonexistent");
    EXPECT_EQ(answerOf(extension.state()), State::NotInstalled);
    qunsetenv("XDG_DATA_HOME");
    evaluate(QStringLiteral("%1.set('%2', window.talmo); 1").arg(known, identifier));
}

TEST_F(GnomeAdapterTest, showsWhenExtensionIsEnabled)
{
    switchExtension("DisableExtension");
    GnomeExtension shells;
    ASSERT_TRUE(waitFor([&shells] { return answerOf(shells.state()) == State::Disabled; }));
    GnomeExtensionStatus extension;
    EXPECT_TRUE(extension.status().sentence.isEmpty());
    extension.refresh();
    ASSERT_TRUE(waitFor([&extension] { return extension.status().canBeEnabled; }));
    EXPECT_TRUE(extension.status().isMissing);
    extension.refresh(); // Answered after the click.
    extension.enable();
    int changes = 0;
    QObject::connect(&extension, &Observable::objectWillChange, &extension, [&changes] { ++changes; });
    EXPECT_FALSE(extension.status().canBeEnabled);
    EXPECT_TRUE(waitFor([&extension] { return !extension.status().isMissing; }));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(extension.status().sentence, QStringLiteral("Talmo's GNOME extension is enabled."));
}

TEST(GnomeExtensionTest, choosesTheOneThatTheShellCanLoad)
{
    EXPECT_EQ(GnomeExtension::identifierFor(QStringLiteral("43.9")), QStringLiteral("talmo-43@talmo.github.io"));
    EXPECT_EQ(GnomeExtension::identifierFor(QStringLiteral("44.10")), QStringLiteral("talmo-43@talmo.github.io"));
    EXPECT_EQ(GnomeExtension::identifierFor(QStringLiteral("45.0")), QStringLiteral("talmo@talmo.github.io"));
    EXPECT_EQ(GnomeExtension::identifierFor(QStringLiteral("48.7")), QStringLiteral("talmo@talmo.github.io"));
}

} // namespace talmo::test
