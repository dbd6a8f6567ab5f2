#pragma once

#include <QString>

namespace talmo::ctl {

/// Reads all of stdin. Throws Error if it cannot be read or is not valid UTF-8.
QString readInput();

/// Reads a line of stdin, with the newline at its end unless the input ends before one.
QString readInputLine();

/// Writes to stdout and flushes. Throws Error if that fails, as on a full disk.
void writeOutput(const QString &text);
/// The same with a newline at the end.
void writeLine(const QString &text);

/// Prints "talmoctl: TEXT" on stderr.
void complain(const QString &text);

} // namespace talmo::ctl
