#pragma once

#include <QObject>

namespace talmo {

/// An object with observable properties. Every change is announced before it is stored, so an observer that needs the
/// new value connects with Qt::QueuedConnection and reads it then. Main thread only.
class Observable : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    void objectWillChange();

protected:
    /// Announces, then stores, even if the value is unchanged.
    template <typename Value, typename New>
    void publish(Value &field, New &&value)
    {
        Q_EMIT objectWillChange();
        field = std::forward<New>(value);
    }
};

} // namespace talmo
