#pragma once

#include "Base/Clock.h"
#include "Base/Completion.h"

namespace talmo::test {

/// Time stands still, and every sleep fails, as when the process is out of file descriptors.
class FailingClock final : public Clock {
public:
    Instant now() const override { return Instant(std::chrono::hours(1)); }
    QFuture<void> sleep(Duration, std::stop_token) override
    {
        return makeFailedFuture<void>(std::make_exception_ptr(Error(QStringLiteral("Cannot create a timer."))));
    }
};

} // namespace talmo::test
