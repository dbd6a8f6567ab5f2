#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace talmo {

/// The keys that are held to dictate, in the whole session. A key that is not a modifier is kept from the other
/// programs; a modifier is shared with them. Main thread.
class HotkeyControl {
public:
    struct Key {
        /// As the settings file has it: "Control_R".
        QString name;
        /// As it is printed on the key: "Right Ctrl".
        QString title;
    };

    /// What became of the names that were set.
    struct Keys {
        /// Those that count; the default ones if no name can be used.
        QList<Key> used;
        /// Names that no key has.
        QStringList unknown;
        /// Keys that type a character.
        QStringList typing;
        /// Titles of keys that this keyboard layout lacks.
        QStringList missing;
        /// Titles of keys that another program has taken, so that it gets them as well.
        QStringList taken;
    };

    struct Press {
        enum class Kind { Usable, Typing, Nameless, Cancelled };
        Kind kind = Kind::Usable;
        Key key;
    };

    virtual ~HotkeyControl() = default;

    /// Takes effect immediately. Empty for the default ones.
    virtual void setKeys(const QStringList &names) = 0;
    virtual Keys keys() const = 0;

    /// Calls back with the next key that the user presses, once. Until then, or until endCapture(), no press counts.
    virtual void beginCapture(std::function<void(const Press &)> onPress) = 0;
    virtual void endCapture() = 0;

    /// While released, the other programs get all keys.
    virtual void setReleased(bool isReleased) = 0;

    /// A key that this keyboard has and no other program takes; nullopt if none is known.
    virtual std::optional<Key> suggestion() const = 0;
    /// Whether a keyboard of this computer claims to have the key; true if that cannot be told.
    virtual bool isOnKeyboard(const QString &name) const = 0;
};

} // namespace talmo
