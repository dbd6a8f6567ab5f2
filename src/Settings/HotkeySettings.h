#pragma once

#include "Base/Observable.h"

#include <QList>
#include <QString>

#include <optional>

namespace talmo {

/// For the settings window: the keys to hold. Announces every change. Main thread.
class HotkeySettings : public Observable {
    Q_OBJECT

public:
    struct Key {
        /// As the settings file has it.
        QString id;
        QString title;
    };
    enum class Capture { Replace, Add };

    using Observable::Observable;

    /// Those that count, in the order in which they were chosen. Never empty.
    virtual QList<Key> keys() const = 0;
    /// Sentences that say what is wrong with the keys and what to do; empty if nothing is.
    virtual QString problem() const = 0;
    /// A key that works on this keyboard, if none of keys() seems to be on it or the user may lack it.
    virtual std::optional<Key> suggestion() const = 0;

    /// Takes the next key that is pressed; until then, no key starts a dictation. Escape ends it without a change.
    virtual void beginCapture(Capture capture) = 0;
    virtual void endCapture() = 0;
    /// Nullopt if no key is being captured.
    virtual std::optional<Capture> capture() const = 0;
    /// Takes effect immediately, as does the next one.
    virtual void use(const QString &id) = 0;
    /// Does nothing for the last one.
    virtual void remove(const QString &id) = 0;
};

} // namespace talmo
