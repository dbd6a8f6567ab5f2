#pragma once

#include "Base/Observable.h"

#include <QString>

namespace talmo {

/// For the settings window: whether the desktop's keyboard may be used to paste, which only the user may allow.
/// Announces every change. Main thread.
class PastePermission : public Observable {
    Q_OBJECT

public:
    using Observable::Observable;

    /// False while Talmo can paste without it.
    virtual bool isNeeded() const = 0;
    virtual bool isAllowed() const = 0;
    /// Why it is not allowed although the user wants it, for users; empty if nothing is wrong.
    virtual QString problem() const = 0;
    /// The desktop may ask the user too. Call only when the user has asked for it.
    virtual void setAllowed(bool isAllowed) = 0;
};

} // namespace talmo
