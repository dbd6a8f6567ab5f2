#pragma once

#include <QString>

namespace talmo {

/// Loads a neural model in a process of its own, which may end over it: the library ends the process over some models
/// that will not do. Waits, up to two minutes. Throws Error.
void checkModelApart(const QString &libraryPath, const QString &modelFolder);

/// The same in this process, for that other one.
void checkModelHere(const QString &libraryPath, const QString &modelFolder);

} // namespace talmo
