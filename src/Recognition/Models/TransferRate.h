#pragma once

#include "Base/Clock.h"

#include <QtGlobal>

#include <deque>
#include <optional>
#include <utility>

namespace talmo {

/// The speed of a download over its last seconds.
class TransferRate {
public:
    /// `bytes`: on disk at that time.
    void add(Instant time, qint64 bytes);
    /// Bytes per second; nullopt until a second has been observed.
    std::optional<double> perSecond() const;

private:
    std::deque<std::pair<Instant, qint64>> m_samples;
};

} // namespace talmo
