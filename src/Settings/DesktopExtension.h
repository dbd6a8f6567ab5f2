#pragma once

#include "Base/Observable.h"

#include <QString>

namespace talmo {

/// For the settings window: an extension of the desktop that comes with Talmo, and that only the user may enable.
/// Announces every change. Main thread.
class DesktopExtension : public Observable {
    Q_OBJECT

public:
    struct Status {
        /// For users; empty while it is not known.
        QString sentence;
        /// Talmo cannot do everything without it.
        bool isMissing = false;
        /// enable() would help.
        bool canBeEnabled = false;
        /// What the user is offered to do; empty: "Enable the extension".
        QString offer = {};
    };

    using Observable::Observable;

    /// As of the last refresh().
    virtual Status status() const = 0;
    /// Asks the desktop again.
    virtual void refresh() = 0;
    /// Call only when the user has asked for it.
    virtual void enable() = 0;
};

} // namespace talmo
