#pragma once

#include <QCoro/QCoroTask>

#include <QFuture>

namespace talmo {

/// Awaits a wait that may be cancelled: true if it elapsed, false if it failed with Cancelled.
QCoro::Task<bool> hasElapsed(QFuture<void> wait);

/// As hasElapsed(), for a wait that bounds something else: one that fails otherwise counts as over, and is logged,
/// since without a timer nothing would ever end.
QCoro::Task<bool> isTimeUp(QFuture<void> limit);

} // namespace talmo
