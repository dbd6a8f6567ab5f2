#pragma once

#include "Platform/Linux/Evdev/EvdevKeyboard.h"

#include <QHash>
#include <QObject>
#include <QString>

#include <functional>
#include <map>
#include <memory>

struct udev_device;

namespace talmo {

/// All keyboards of the machine as one, including those plugged in later. Never grabs one, and asks for no right to
/// read them. Main thread.
class EvdevKeyboards {
public:
    /// Null if there is no keyboard, or this user may not read all of them: the one the user types on may be among the
    /// others.
    static std::unique_ptr<EvdevKeyboards> open();
    ~EvdevKeyboards();
    EvdevKeyboards(const EvdevKeyboards &) = delete;
    EvdevKeyboards &operator=(const EvdevKeyboards &) = delete;

    /// A key that is held on two keyboards is pressed once, and released with the last.
    void setOnKey(EvdevKeyboard::OnKey callback) { m_onKey = std::move(callback); }

private:
    enum class Access { Readable, Refused, NoKeyboard };

    EvdevKeyboards();
    bool openAll();
    Access add(udev_device *device);
    void remove(const QString &node);
    void removeLater(const QString &node);
    void readChanges();
    void handleKey(int code, bool isDown);

    struct Udev;
    std::unique_ptr<Udev> m_udev;
    std::map<QString, std::unique_ptr<EvdevKeyboard>> m_keyboards;
    /// How many keyboards hold a key.
    QHash<int, int> m_holders;
    EvdevKeyboard::OnKey m_onKey;
    QObject m_context;
};

} // namespace talmo
