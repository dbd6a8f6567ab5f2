#pragma once

#include "Input/Hotkey/HotkeyControl.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>
#include <set>

namespace talmo {

/// The trigger keys of a key monitor; what differs from monitor to monitor is left to it.
class TriggerKeyControl : public HotkeyControl {
public:
    void setKeys(const QStringList &names) final;
    Keys keys() const final;
    std::optional<Key> suggestion() const final;
    bool isOnKeyboard(const QString &name) const final;

protected:
    explicit TriggerKeyControl(QStringList names);

private:
    virtual void setTriggerKeys(const QList<quint32> &keySymbols) = 0;
    /// The kernel's codes of the keys with this symbol in the keyboard's layout.
    virtual std::set<int> codesOf(quint32 keySymbol) const = 0;
    /// Whether the key could not be kept from the other programs because one of them has grabbed it.
    virtual bool isRefused(int code) const = 0;
    /// Whether no other program has grabbed the key; always true if keys are not kept from them.
    virtual bool isFree(int code) const = 0;

    QStringList m_names;
};

} // namespace talmo
