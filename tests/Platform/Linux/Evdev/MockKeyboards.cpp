#include "Platform/Linux/Evdev/MockKeyboards.h"

#include <gtest/gtest.h>

#include <umockdev.h>

#include <array>
#include <cerrno>
#include <cstring>

#include <unistd.h>

namespace talmo::test {

struct MockKeyboards::Keyboard {
    QByteArray sysPath;
    int device = -1;
    UMockdevIoctlBase *ioctls = nullptr;
    /// umockdev asks on a thread of its own.
    std::mutex mutex;
    std::set<int> held;
};

namespace {

void setBit(QByteArray &bits, int bit)
{
    if (bit / 8 < bits.size()) {
        bits[bit / 8] = static_cast<char>(bits[bit / 8] | 1 << bit % 8);
    }
}

} // namespace

MockKeyboards::MockKeyboards()
    : m_testbed(umockdev_testbed_new())
{
}

MockKeyboards::~MockKeyboards()
{
    for (const auto &[number, keyboard] : m_keyboards) {
        if (keyboard->ioctls != nullptr) {
            umockdev_testbed_detach_ioctl(
                m_testbed, QByteArray("/dev/input/event" + QByteArray::number(number)).constData(), nullptr);
            g_object_unref(keyboard->ioctls);
        }
    }
    g_object_unref(m_testbed);
}

void MockKeyboards::plugIn(int keyboard)
{
    const QByteArray name = "input/event" + QByteArray::number(keyboard);
    add(keyboard, "N: " + name + "\n");
    auto &added = *m_keyboards[keyboard];
    added.device = umockdev_testbed_get_dev_fd(m_testbed, QByteArray("/dev/" + name).constData());
    ASSERT_GE(added.device, 0);
    added.ioctls = umockdev_ioctl_base_new();
    g_signal_connect(added.ioctls, "handle-ioctl", G_CALLBACK(&MockKeyboards::answer), &added);
    GError *error = nullptr;
    ASSERT_TRUE(umockdev_testbed_attach_ioctl(m_testbed, QByteArray("/dev/" + name).constData(), added.ioctls, &error));
    umockdev_testbed_uevent(m_testbed, added.sysPath.constData(), "add");
}

void MockKeyboards::plugInUnreadable(int keyboard)
{
    add(keyboard, {});
}

void MockKeyboards::add(int keyboard, const QByteArray &node)
{
    const QByteArray number = QByteArray::number(keyboard);
    const QByteArray path = "/devices/keyboard" + number + "/input/input" + number + "/event" + number;
    const QByteArray description = "P: " + path + "\n" + node + "E: DEVNAME=/dev/input/event" + number +
                                   "\nE: SUBSYSTEM=input\nE: ID_INPUT=1\nE: ID_INPUT_KEY=1\nE: ID_INPUT_KEYBOARD=1\n"
                                   "A: dev=13:" +
                                   QByteArray::number(64 + keyboard) + "\n";
    GError *error = nullptr;
    ASSERT_TRUE(umockdev_testbed_add_from_string(m_testbed, description.constData(), &error)) << error->message;
    m_keyboards[keyboard] = std::make_unique<Keyboard>();
    m_keyboards[keyboard]->sysPath = "/sys" + path;
}

void MockKeyboards::unplug(int keyboard)
{
    umockdev_testbed_uevent(m_testbed, m_keyboards[keyboard]->sysPath.constData(), "remove");
}

void MockKeyboards::move(int keyboard, int code, int value)
{
    auto &moved = *m_keyboards[keyboard];
    {
        const std::lock_guard lock(moved.mutex);
        if (value == 0) {
            moved.held.erase(code);
        } else {
            moved.held.insert(code);
        }
    }
    std::array<input_event, 2> events{};
    events[0].type = EV_KEY;
    events[0].code = static_cast<__u16>(code);
    events[0].value = value;
    events[1].type = EV_SYN;
    events[1].code = SYN_REPORT;
    ASSERT_EQ(::write(moved.device, events.data(), sizeof(events)), static_cast<ssize_t>(sizeof(events)));
}

void MockKeyboards::dropRelease(int keyboard, int code)
{
    auto &moved = *m_keyboards[keyboard];
    {
        const std::lock_guard lock(moved.mutex);
        moved.held.erase(code);
    }
    std::array<input_event, 2> events{};
    events[0].type = EV_SYN;
    events[0].code = SYN_DROPPED;
    events[1].type = EV_SYN;
    events[1].code = SYN_REPORT;
    ASSERT_EQ(::write(moved.device, events.data(), sizeof(events)), static_cast<ssize_t>(sizeof(events)));
}

/// What the kernel answers to the questions of libevdev.
int MockKeyboards::answer(UMockdevIoctlBase *, UMockdevIoctlClient *client, void *data)
{
    auto &keyboard = *static_cast<Keyboard *>(data);
    const auto request = umockdev_ioctl_client_get_request(client);
    const auto size = _IOC_SIZE(request);
    if (_IOC_TYPE(request) != 'E') {
        return FALSE;
    }
    if (request == EVIOCSMASK) {
        umockdev_ioctl_client_complete(client, 0, 0);
        return TRUE;
    }
    QByteArray bytes(static_cast<qsizetype>(size), '\0');
    if (request == EVIOCGVERSION) {
        const int version = EV_VERSION;
        std::memcpy(bytes.data(), &version, sizeof(version));
    } else if (_IOC_NR(request) == _IOC_NR(EVIOCGPHYS(0)) || _IOC_NR(request) == _IOC_NR(EVIOCGUNIQ(0))) {
        umockdev_ioctl_client_complete(client, -1, ENOENT);
        return TRUE;
    } else if (_IOC_NR(request) == _IOC_NR(EVIOCGNAME(0))) {
        bytes.replace(0, 8, "Keyboard");
    } else if (_IOC_NR(request) == _IOC_NR(EVIOCGBIT(0, 0))) {
        setBit(bytes, EV_SYN);
        setBit(bytes, EV_KEY);
    } else if (_IOC_NR(request) == _IOC_NR(EVIOCGBIT(EV_KEY, 0))) {
        for (int key = 1; key < KEY_MICMUTE; ++key) {
            setBit(bytes, key);
        }
        setBit(bytes, KEY_FN);
    } else if (_IOC_NR(request) == _IOC_NR(EVIOCGKEY(0))) {
        const std::lock_guard lock(keyboard.mutex);
        for (const int key : keyboard.held) {
            setBit(bytes, key);
        }
    }
    GError *error = nullptr;
    auto *target = umockdev_ioctl_data_resolve(umockdev_ioctl_client_get_arg(client), 0, size, &error);
    if (target == nullptr) {
        umockdev_ioctl_client_complete(client, -1, EFAULT);
        return TRUE;
    }
    umockdev_ioctl_data_update(target, 0, reinterpret_cast<guint8 *>(bytes.data()), static_cast<gint>(size));
    umockdev_ioctl_data_unref(target);
    umockdev_ioctl_client_complete(client, static_cast<glong>(size), 0);
    return TRUE;
}

} // namespace talmo::test
