#pragma once

#include <QColor>
#include <QList>
#include <QObject>

#include <optional>

namespace talmo {

/// The kind of tray that icons are embedded into as windows. Main thread.
class TrayEmbedding : public QObject {
    Q_OBJECT

public:
    virtual bool hasTray() const = 0;
    /// As the tray itself announces them; empty if it does not.
    virtual QList<quint32> colours() const = 0;
    /// Behind the embedded icon, if it can be read.
    virtual std::optional<QColor> background() const = 0;

Q_SIGNALS:
    void trayAppeared();
    /// Something of Talmo's was drawn, possibly the icon in its place.
    void exposed();
};

} // namespace talmo
