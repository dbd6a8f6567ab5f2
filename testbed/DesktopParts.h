#pragma once

#include "ChildProcess.h"

#include <QProcessEnvironment>

#include <memory>

namespace talmo::testbed {

/// Optional parts of a desktop besides the window manager. Each ends when its pointer is destroyed; each throws Error
/// if it does not start.

/// A bar in the upper right corner that icons are embedded into.
std::unique_ptr<ChildProcess> startTray(const QProcessEnvironment &environment, const QStringList &arguments = {});

/// The program that makes translucent windows possible.
std::unique_ptr<ChildProcess> startCompositor(const QProcessEnvironment &environment);

/// A private session bus, which is set in `environment` and in this process.
std::unique_ptr<ChildProcess> startBus(QProcessEnvironment &environment);

} // namespace talmo::testbed
