#pragma once

#include "Base/Observable.h"

namespace talmo {

/// What a user can switch on or off about dictating, beside the preferences.
enum class DictationOption {
    /// A space before a dictation that continues the last one.
    SpaceBetween,
    /// The last dictations are kept in memory.
    KeepHistory,
    /// Sounds when a recording starts, when it ends and when something goes wrong.
    Sounds,
};

/// For the settings window and the services: which options are on. Announces every change. Main thread.
class DictationOptions : public Observable {
    Q_OBJECT

public:
    using Observable::Observable;
    virtual bool isOn(DictationOption option) const = 0;
    /// Takes effect at once.
    virtual void setOn(DictationOption option, bool isOn) = 0;
};

} // namespace talmo
