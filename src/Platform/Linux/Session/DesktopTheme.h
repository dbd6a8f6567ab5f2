#pragma once

#include <QObject>
#include <QString>

namespace talmo {

/// The theme that the desktop announces to programs built with other toolkits than Qt. Main thread.
class DesktopTheme : public QObject {
    Q_OBJECT

public:
    /// Such as "Adwaita-dark"; empty if it names none.
    virtual QString themeName() const = 0;
    /// Such as "Noto Sans Bold 11", the size in points; empty if it names none.
    virtual QString fontName() const = 0;

Q_SIGNALS:
    void changed();
};

} // namespace talmo
