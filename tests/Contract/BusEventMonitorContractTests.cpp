// The sources of keys that are services of the session bus, against stand-ins for these.

#include "Base/SerialExecutor.h"
#include "Contract/EventMonitorContract.h"
#include "DesktopParts.h"
#include "Platform/Linux/Wayland/Kde/KdeKeys.h"
#include "Platform/Linux/Wayland/Portal/PortalKeys.h"
#include "Support/ManualClock.h"
#include "Support/MockPortal.h"
#include "Support/ShortcutService.h"

#include <QTemporaryDir>

#include <xkbcommon/xkbcommon-keysyms.h>

namespace talmo::test {

namespace {

/// A session bus of its own, which is that of the environment meanwhile.
class PrivateBus {
public:
    PrivateBus()
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_RUNTIME_DIR"_s, m_folder.path());
        m_daemon = testbed::startBus(environment);
        qputenv("DBUS_SESSION_BUS_ADDRESS", environment.value(u"DBUS_SESSION_BUS_ADDRESS"_s).toUtf8());
        connection = QDBusConnection::connectToBus(environment.value(u"DBUS_SESSION_BUS_ADDRESS"_s), u"contract"_s);
    }
    ~PrivateBus()
    {
        QDBusConnection::disconnectFromBus(u"contract"_s);
        qputenv("DBUS_SESSION_BUS_ADDRESS", m_previous);
    }
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    QDBusConnection connection{QString()};

private:
    QTemporaryDir m_folder;
    QByteArray m_previous = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    std::unique_ptr<testbed::ChildProcess> m_daemon;
};

struct PortalSubject {
    void awaitKeys()
    {
        ASSERT_TRUE(waitFor([this] { return monitor.state() == PortalKeys::State::Bound; }));
    }
    void press() { portal.press(); }
    void release() { portal.release(); }
    void setActive(bool active) { isActive = active; }

    PrivateBus bus;
    MockPortal portal{MockPortal::Behaviour()};
    bool isActive = false;
    PortalKeys monitor{PortalKeys::Options{XKB_KEY_Pause, [this] { return isActive; }, std::make_shared<ManualClock>()},
                       bus.connection};
};

/// KdeKeys waits for answers, so the service needs a thread of its own.
struct KdeSubject {
    KdeSubject()
        : keys(open()),
          monitor(*keys)
    {
    }
    ~KdeSubject()
    {
        keys.reset();
        thread->call([this] { service.reset(); }).waitForFinished();
    }
    KdeSubject(const KdeSubject &) = delete;
    KdeSubject &operator=(const KdeSubject &) = delete;

    void press()
    {
        thread->call([this] { service->press(u"dictate"_s); }).waitForFinished();
    }
    void release()
    {
        thread->call([this] { service->release(u"dictate"_s); }).waitForFinished();
    }
    void setActive(bool active) { isActive = active; }

    PrivateBus bus;
    std::shared_ptr<SerialExecutor> thread = SerialExecutor::onNewThread(u"shortcuts"_s);
    std::unique_ptr<ShortcutService> service;
    bool isActive = false;
    std::shared_ptr<KdeKeys> keys;
    EventMonitor &monitor;

private:
    std::shared_ptr<KdeKeys> open()
    {
        thread->call([this] { service = std::make_unique<ShortcutService>(); }).waitForFinished();
        return KdeKeys::open(XKB_KEY_Pause, [this] { return isActive; }, bus.connection);
    }
};

using Subjects = testing::Types<PortalSubject, KdeSubject>;
INSTANTIATE_TYPED_TEST_SUITE_P(Services, EventMonitorContract, Subjects);

} // namespace

} // namespace talmo::test
