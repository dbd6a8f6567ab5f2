#include "Platform/Linux/Evdev/EvdevKeyboard.h"

#include <QFile>

#include <libevdev/libevdev.h>

#include <fcntl.h>
#include <sys/ioctl.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <utility>

namespace talmo {

namespace {

/// A keyboard with a built-in pointer would wake this program at every movement. Kernels before 4.4 cannot filter.
void receiveKeysOnly(int file)
{
    constexpr unsigned bitsOfByte = 8;
    std::array<std::uint8_t, EV_CNT / bitsOfByte> types{};
    for (const unsigned type : {unsigned{EV_SYN}, unsigned{EV_KEY}}) {
        types[type / bitsOfByte] |= static_cast<std::uint8_t>(1U << type % bitsOfByte);
    }
    const input_mask mask{EV_SYN, static_cast<__u32>(types.size()), reinterpret_cast<std::uintptr_t>(types.data())};
    ::ioctl(file, EVIOCSMASK, &mask);
}

} // namespace

void EvdevKeyboard::FreeDevice::operator()(libevdev *device) const
{
    libevdev_free(device);
}

std::unique_ptr<EvdevKeyboard> EvdevKeyboard::open(const QString &node, OnKey onKey, std::function<void()> onGone)
{
    FileDescriptor file(::open(QFile::encodeName(node).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!file) {
        return nullptr;
    }
    receiveKeysOnly(file.get());
    libevdev *device = nullptr;
    if (const int status = libevdev_new_from_fd(file.get(), &device); status < 0) {
        errno = -status;
        return nullptr;
    }
    return std::unique_ptr<EvdevKeyboard>(
        new EvdevKeyboard(std::move(file), Device(device), std::move(onKey), std::move(onGone)));
}

EvdevKeyboard::EvdevKeyboard(FileDescriptor file, Device device, OnKey onKey, std::function<void()> onGone)
    : m_file(std::move(file)),
      m_device(std::move(device)),
      m_onKey(std::move(onKey)),
      m_onGone(std::move(onGone)),
      m_notifier(m_file.get(), QSocketNotifier::Read)
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] {
        if (!readEvents()) {
            m_notifier.setEnabled(false);
            releaseAll();
            m_onGone();
        }
    });
}

EvdevKeyboard::~EvdevKeyboard() = default;

/// False once the device is gone. After dropped events, libevdev asks for the state of all keys, and passes what has
/// changed as events.
bool EvdevKeyboard::readEvents()
{
    unsigned mode = LIBEVDEV_READ_FLAG_NORMAL;
    while (true) {
        input_event event{};
        const int status = libevdev_next_event(m_device.get(), mode, &event);
        if (status == -EAGAIN) {
            if (mode == LIBEVDEV_READ_FLAG_NORMAL) {
                return true;
            }
            mode = LIBEVDEV_READ_FLAG_NORMAL;
        } else if (status < 0 && status != -EINTR) {
            return false;
        } else if (status >= 0) {
            if (status == LIBEVDEV_READ_STATUS_SYNC) {
                mode = LIBEVDEV_READ_FLAG_SYNC;
            }
            handle(event);
        }
    }
}

void EvdevKeyboard::handle(const input_event &event)
{
    constexpr int pressed = 1; // 2 is a repeat.
    if (event.type != EV_KEY) {
        return;
    }
    if (event.value == pressed && m_held.insert(event.code).second) {
        m_onKey(event.code, true);
    } else if (event.value == 0 && m_held.erase(event.code) > 0) {
        m_onKey(event.code, false);
    }
}

void EvdevKeyboard::releaseAll()
{
    for (const int code : std::exchange(m_held, {})) {
        m_onKey(code, false);
    }
}

} // namespace talmo
