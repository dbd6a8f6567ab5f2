#pragma once

#include <QString>

namespace talmo::ctl {

/// The whole of standard input. Throws Error when it is no UTF-8 text or cannot be read.
QString readInput();

/// To standard output, at once. Throws Error when it cannot be written, as to a full disk.
void writeOutput(const QString &text);
/// The same with a line end.
void writeLine(const QString &text);

/// A line for the user on standard error.
void complain(const QString &text);

} // namespace talmo::ctl
