#pragma once

#include "Base/Clock.h"
#include "Platform/DesktopCheck.h"

#include <QCoro/QCoroTask>

#include <functional>
#include <memory>
#include <optional>

namespace talmo::ctl {

/// The outcome of recording from the microphone.
struct SoundCheck {
    CheckResult result;
    /// The loudest sample, from 0 to 1; nullopt if nothing could be recorded.
    std::optional<float> peak;

    /// Listens for two seconds. `microphone`: the chosen one; empty for the default. `onPeak` is called on this thread,
    /// about 25 times a second.
    static QCoro::Task<SoundCheck> run(QString microphone, std::shared_ptr<Clock> clock,
                                       std::function<void(float)> onPeak);
};

} // namespace talmo::ctl
