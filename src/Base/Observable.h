#pragma once

#include <QObject>

namespace talmo {

/// An object whose published values are watched. Every change is announced before it is stored, so a watcher that
/// wants the new value subscribes queued and reads again. Main thread only.
class Observable : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    void objectWillChange();

protected:
    /// Announces, then stores: also when the value is the one it has already.
    template <typename Value, typename New>
    void publish(Value &field, New &&value)
    {
        Q_EMIT objectWillChange();
        field = std::forward<New>(value);
    }
};

} // namespace talmo
