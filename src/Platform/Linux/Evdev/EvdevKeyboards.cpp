#include "Platform/Linux/Evdev/EvdevKeyboards.h"

#include "Base/Log.h"

#include <QSocketNotifier>

#include <libudev.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace talmo {

namespace {

template <auto Release>
struct Unref {
    template <typename T>
    void operator()(T *object) const
    {
        Release(object);
    }
};

using UdevDevice = std::unique_ptr<udev_device, Unref<&udev_device_unref>>;

bool has(udev_device *device, const char *property)
{
    const char *value = udev_device_get_property_value(device, property);
    return value != nullptr && std::strcmp(value, "1") == 0;
}

/// Empty if it is not one that reports events.
QString nodeOf(udev_device *device)
{
    const auto node = QString::fromLocal8Bit(udev_device_get_devnode(device));
    return node.startsWith(QLatin1String("/dev/input/event")) ? node : QString();
}

} // namespace

struct EvdevKeyboards::Udev {
    std::unique_ptr<udev, Unref<&udev_unref>> library;
    std::unique_ptr<udev_monitor, Unref<&udev_monitor_unref>> monitor;
    std::unique_ptr<QSocketNotifier> notifier;
};

EvdevKeyboards::EvdevKeyboards()
    : m_udev(std::make_unique<Udev>())
{
}

EvdevKeyboards::~EvdevKeyboards() = default;

std::unique_ptr<EvdevKeyboards> EvdevKeyboards::open()
{
    std::unique_ptr<EvdevKeyboards> keyboards(new EvdevKeyboards);
    return keyboards->openAll() ? std::move(keyboards) : nullptr;
}

bool EvdevKeyboards::openAll()
{
    m_udev->library.reset(udev_new());
    if (!m_udev->library) {
        return false;
    }
    // Before the devices are listed, so that none is missed in between.
    m_udev->monitor.reset(udev_monitor_new_from_netlink(m_udev->library.get(), "udev"));
    auto *monitor = m_udev->monitor.get();
    if (monitor == nullptr || udev_monitor_filter_add_match_subsystem_devtype(monitor, "input", nullptr) < 0 ||
        udev_monitor_enable_receiving(monitor) < 0) {
        return false;
    }
    const std::unique_ptr<udev_enumerate, Unref<&udev_enumerate_unref>> devices(
        udev_enumerate_new(m_udev->library.get()));
    udev_enumerate_add_match_subsystem(devices.get(), "input");
    udev_enumerate_scan_devices(devices.get());
    for (auto *entry = udev_enumerate_get_list_entry(devices.get()); entry != nullptr;
         entry = udev_list_entry_get_next(entry)) {
        const UdevDevice device(udev_device_new_from_syspath(m_udev->library.get(), udev_list_entry_get_name(entry)));
        if (device && add(device.get()) == Access::Refused) {
            return false;
        }
    }
    m_udev->notifier = std::make_unique<QSocketNotifier>(udev_monitor_get_fd(monitor), QSocketNotifier::Read);
    QObject::connect(m_udev->notifier.get(), &QSocketNotifier::activated, m_udev->notifier.get(),
                     [this] { readChanges(); });
    return !m_keyboards.empty();
}

/// Also devices with only a few keys, such as a foot switch; but only those that people type on have to be readable.
EvdevKeyboards::Access EvdevKeyboards::add(udev_device *device)
{
    const QString node = nodeOf(device);
    if (node.isEmpty() || !has(device, "ID_INPUT_KEY")) {
        return Access::NoKeyboard;
    }
    if (m_keyboards.contains(node)) {
        return Access::Readable;
    }
    auto keyboard = EvdevKeyboard::open(
        node, [this](int code, bool isDown) { handleKey(code, isDown); }, [this, node] { removeLater(node); });
    if (!keyboard) {
        generalLog().info("cannot read the keys of %s: %s", {node, QString::fromLocal8Bit(std::strerror(errno))});
        return has(device, "ID_INPUT_KEYBOARD") ? Access::Refused : Access::NoKeyboard;
    }
    m_keyboards[node] = std::move(keyboard);
    return Access::Readable;
}

void EvdevKeyboards::remove(const QString &node)
{
    if (const auto keyboard = m_keyboards.extract(node)) {
        keyboard.mapped()->releaseAll();
    }
}

void EvdevKeyboards::removeLater(const QString &node)
{
    const auto *gone = m_keyboards[node].get();
    QMetaObject::invokeMethod(
        &m_context,
        [this, node, gone] {
            // Another device may have taken its path in the meantime.
            const auto found = m_keyboards.find(node);
            if (found != m_keyboards.end() && found->second.get() == gone) {
                m_keyboards.erase(found);
            }
        },
        Qt::QueuedConnection);
}

void EvdevKeyboards::readChanges()
{
    while (const UdevDevice device{udev_monitor_receive_device(m_udev->monitor.get())}) {
        const char *action = udev_device_get_action(device.get());
        if (action != nullptr && std::strcmp(action, "remove") == 0) {
            remove(nodeOf(device.get()));
        } else {
            add(device.get());
        }
    }
}

void EvdevKeyboards::handleKey(int code, bool isDown)
{
    int &holders = m_holders[code];
    holders += isDown ? 1 : -1;
    const bool hasChanged = holders == (isDown ? 1 : 0);
    if (holders == 0) {
        m_holders.remove(code);
    }
    if (hasChanged && m_onKey) {
        m_onKey(code, isDown);
    }
}

} // namespace talmo
