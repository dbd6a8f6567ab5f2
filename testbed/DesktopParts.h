#pragma once

#include "ChildProcess.h"

#include <QProcessEnvironment>

#include <memory>

namespace talmo::testbed {

/// What a desktop may have besides a window manager. Each ends when the pointer goes; each throws Error when it does
/// not start.

/// A bar into which icons are embedded, in the upper right corner.
std::unique_ptr<ChildProcess> startTray(const QProcessEnvironment &environment, const QStringList &arguments = {});

/// What makes windows translucent.
std::unique_ptr<ChildProcess> startCompositor(const QProcessEnvironment &environment);

/// A session bus of its own, which `environment` and this process know from then on.
std::unique_ptr<ChildProcess> startBus(QProcessEnvironment &environment);

} // namespace talmo::testbed
