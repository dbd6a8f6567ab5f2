#pragma once

#include <QColor>
#include <QList>
#include <QObject>

#include <optional>

namespace talmo {

/// A tray that icons are embedded into as windows. Main thread.
class TrayEmbedding : public QObject {
    Q_OBJECT

public:
    virtual bool hasTray() const = 0;
    /// The colours that the tray announces; empty if it announces none.
    virtual QList<quint32> colours() const = 0;
    /// The colour behind the embedded icon; none if it cannot be read.
    virtual std::optional<QColor> background() const = 0;

Q_SIGNALS:
    void trayAppeared();
    /// One of Talmo's windows was drawn, possibly the embedded icon.
    void exposed();
};

} // namespace talmo
