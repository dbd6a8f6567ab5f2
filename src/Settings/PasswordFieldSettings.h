#pragma once

#include "Base/Observable.h"

namespace talmo {

/// Whether password fields get no text, for the settings window. Announces every change. Main thread.
class PasswordFieldSettings : public Observable {
    Q_OBJECT

public:
    using Observable::Observable;
    virtual bool isGuarded() const = 0;
    /// From the next insertion on.
    virtual void setGuarded(bool isGuarded) = 0;
};

} // namespace talmo
