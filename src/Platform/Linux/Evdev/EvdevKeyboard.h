#pragma once

#include "Platform/Linux/System/FileDescriptor.h"

#include <QSocketNotifier>
#include <QString>

#include <functional>
#include <memory>
#include <set>

struct input_event; // NOLINT(readability-identifier-naming): the kernel's.
struct libevdev;

namespace talmo {

/// The keys of one keyboard, read from its device without grabbing it. Sleeps until a key moves. Thread with an event
/// loop.
class EvdevKeyboard {
public:
    /// Presses and releases, by the kernel's codes; no repeats. Every press is followed by a release, also if the
    /// keyboard is unplugged, or the kernel has dropped events.
    using OnKey = std::function<void(int code, bool isDown)>;

    /// Null, with errno set, if the device cannot be read. `onGone`: the keyboard has been unplugged, its keys are
    /// released, and it must not be destroyed before this call returns.
    static std::unique_ptr<EvdevKeyboard> open(const QString &node, OnKey onKey, std::function<void()> onGone);
    /// Reports no releases.
    ~EvdevKeyboard();
    EvdevKeyboard(const EvdevKeyboard &) = delete;
    EvdevKeyboard &operator=(const EvdevKeyboard &) = delete;

    void releaseAll();

private:
    struct FreeDevice {
        void operator()(libevdev *device) const;
    };
    using Device = std::unique_ptr<libevdev, FreeDevice>;

    EvdevKeyboard(FileDescriptor file, Device device, OnKey onKey, std::function<void()> onGone);
    bool readEvents();
    void handle(const input_event &event);

    FileDescriptor m_file;
    Device m_device;
    OnKey m_onKey;
    std::function<void()> m_onGone;
    std::set<int> m_held;
    QSocketNotifier m_notifier;
};

} // namespace talmo
