#pragma once

#include "Base/Observable.h"

namespace talmo {

/// For the settings window: whether text is kept out of password fields. Announces every change. Main thread.
class PasswordFieldSettings : public Observable {
    Q_OBJECT

public:
    using Observable::Observable;
    virtual bool isGuarded() const = 0;
    /// Takes effect from the next insertion.
    virtual void setGuarded(bool isGuarded) = 0;
};

} // namespace talmo
