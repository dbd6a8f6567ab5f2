#pragma once

#include "ChildProcess.h"

#include <QProcessEnvironment>

#include <memory>

namespace talmo::testbed {

/// The environment of a desktop of its own: makes the folders for programs' files in `folder`, and names them. Without
/// the platform plug-ins of the desktop, the variables of the caller's, or a bus: programs would start their own.
QProcessEnvironment privateEnvironment(const QString &folder);

/// What a program of the desktop prints; empty if it fails.
QByteArray outputOf(const QProcessEnvironment &environment, const QString &program, const QStringList &arguments);

/// Copies to a Wayland clipboard, and waits until others can paste it. `options`: those that wl-copy and wl-paste
/// share, such as the type. Throws Error.
void wlCopy(const QProcessEnvironment &environment, const QByteArray &text, const QStringList &options);
QByteArray wlPaste(const QProcessEnvironment &environment, const QStringList &options);

/// Optional parts of a desktop besides the window manager. Each ends when its pointer is destroyed; each throws Error
/// if it does not start.

/// A bar in the upper right corner that icons are embedded into.
std::unique_ptr<ChildProcess> startTray(const QProcessEnvironment &environment, const QStringList &arguments = {});

/// The program that makes translucent windows possible.
std::unique_ptr<ChildProcess> startCompositor(const QProcessEnvironment &environment);

/// A private session bus, which is set in `environment` and in this process.
std::unique_ptr<ChildProcess> startBus(QProcessEnvironment &environment);

} // namespace talmo::testbed
