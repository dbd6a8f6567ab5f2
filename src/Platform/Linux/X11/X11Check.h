#pragma once

#include "Platform/DesktopCheck.h"

namespace talmo {

/// checkDesktop() where windows are those of X.
QList<CheckResult> checkX11(const DesktopCheckOptions &options);

} // namespace talmo
