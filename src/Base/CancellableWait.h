#pragma once

#include <QCoro/QCoroTask>

#include <QFuture>

namespace talmo {

/// Awaits a wait that may be cancelled: true if its time has come, false if it failed with Cancelled.
QCoro::Task<bool> hasElapsed(QFuture<void> wait);

} // namespace talmo
