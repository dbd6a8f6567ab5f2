#include "Platform/Linux/Wayland/Kde/KdeKeys.h"

#include "Base/SerialExecutor.h"
#include "DesktopParts.h"
#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "Support/Printing.h"
#include "Support/ShortcutService.h"
#include "Support/TestLoop.h"
#include "Waiting.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <xkbcommon/xkbcommon-keysyms.h>

namespace talmo::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class KdeKeysTest : public testing::Test {
protected:
    static constexpr testbed::Timeout timeout = std::chrono::seconds(10);

    KdeKeysTest()
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_RUNTIME_DIR"_s, folder.path());
        daemon = testbed::startBus(environment);
        address = environment.value(u"DBUS_SESSION_BUS_ADDRESS"_s);
        bus = QDBusConnection::connectToBus(address, u"kde"_s);
    }
    ~KdeKeysTest() override
    {
        keys.reset();
        stopService();
        QDBusConnection::disconnectFromBus(u"kde"_s);
    }
    KdeKeysTest(const KdeKeysTest &) = delete;
    KdeKeysTest &operator=(const KdeKeysTest &) = delete;

    void startService(int takenKey = 0)
    {
        onServiceThread([this, takenKey] { service = std::make_unique<ShortcutService>(takenKey); });
    }
    void stopService()
    {
        onServiceThread([this] { service.reset(); });
    }
    /// Talmo waits for its answers, so it needs a thread of its own.
    void onServiceThread(const std::function<void()> &work) { serviceThread->call(work).waitForFinished(); }
    QStringList calls()
    {
        QStringList all;
        onServiceThread([this, &all] { all = service->calls; });
        return all;
    }
    void press(const QString &action = u"dictate"_s)
    {
        onServiceThread([this, &action] { service->press(action); });
    }
    void release()
    {
        onServiceThread([this] { service->release(u"dictate"_s); });
    }
    void open()
    {
        keys = KdeKeys::open(XKB_KEY_Pause, [] { return false; }, bus);
        ASSERT_NE(keys, nullptr);
        monitor = keys->addGlobalMonitor(GlobalHotkeyManager::flagsChangedMask, [this](const FlagsChangedEvent &event) {
            events.push_back(event.modifierFlags != 0);
        });
    }
    /// Calls are events of the service's thread only.
    bool waitForCalls(const QStringList &expected)
    {
        return testbed::pollUntil([&] { return calls() == expected; }, timeout);
    }
    bool waitForEvents(std::size_t count)
    {
        return waitFor([this, count] { return events.size() >= count; });
    }

    QTemporaryDir folder;
    std::unique_ptr<testbed::ChildProcess> daemon;
    QString address;
    QDBusConnection bus{QString()};
    std::shared_ptr<SerialExecutor> serviceThread = SerialExecutor::onNewThread(u"shortcuts"_s);
    std::unique_ptr<ShortcutService> service;
    std::shared_ptr<KdeKeys> keys;
    std::shared_ptr<EventMonitorToken> monitor;
    std::vector<bool> events;
};

} // namespace

TEST_F(KdeKeysTest, isNullWithoutService)
{
    EXPECT_EQ(KdeKeys::open(XKB_KEY_Pause, [] { return false; }, bus), nullptr);
}

TEST_F(KdeKeysTest, reportsHoldOnceAndFreesKeyAtEnd)
{
    startService();
    open();
    EXPECT_TRUE(keys->hasKey());
    EXPECT_THAT(calls(), ElementsAre(u"register talmo/dictate"_s, u"set %1 6"_s.arg(int(Qt::Key_Pause))));
    press();
    press(); // The key repeats.
    release();
    ASSERT_TRUE(waitForEvents(2));
    press(u"another action"_s);
    press();
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_THAT(events, ElementsAre(true, false, true));
    keys.reset();
    EXPECT_TRUE(waitForCalls({u"register talmo/dictate"_s, u"set %1 6"_s.arg(int(Qt::Key_Pause)), u"inactive"_s}));
}

TEST_F(KdeKeysTest, reportsKeyTakenByAnotherProgram)
{
    startService(Qt::Key_Pause);
    open();
    EXPECT_FALSE(keys->hasKey());
}

TEST_F(KdeKeysTest, guardFreesKeyOnlyAfterCrash)
{
    startService();
    const auto previous = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("DBUS_SESSION_BUS_ADDRESS", address.toUtf8());
    const QStringList action{u"talmo"_s, u"dictate"_s, u"Talmo"_s, u"Hold to dictate"_s};
    {
        const KdeKeyGuard dismissed(action);
    }
    EXPECT_THAT(calls(), IsEmpty());
    KdeKeyGuard guard(action);
    guard.handleCrash();
    EXPECT_TRUE(waitForCalls({u"inactive"_s}));
    qputenv("DBUS_SESSION_BUS_ADDRESS", previous);
}

TEST_F(KdeKeysTest, releasesHeldKeyAndRegistersAgainWhenServiceRestarts)
{
    startService();
    open();
    press();
    ASSERT_TRUE(waitForEvents(1));
    stopService();
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre(true, false));
    startService();
    EXPECT_TRUE(testbed::pollUntil([this] { return calls().size() == 2; }, timeout));
    press();
    ASSERT_TRUE(waitForEvents(3));
}

TEST(KdeKeys, usesTheFirstKeyThatIsNoModifier)
{
    EXPECT_EQ(KdeKeys::usableKey({XKB_KEY_Control_R, XKB_KEY_F9, XKB_KEY_Menu}), quint32(XKB_KEY_F9));
    EXPECT_EQ(KdeKeys::usableKey({XKB_KEY_Control_R}), quint32(XKB_KEY_Pause));
    EXPECT_EQ(KdeKeys::usableKey({XKB_KEY_F13}), quint32(XKB_KEY_Pause));
}

} // namespace talmo::test
