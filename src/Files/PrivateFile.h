#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace talmo {

/// Files and folders that nobody but their owner may read. Whatever the umask says, what is made here is private, and
/// what was made less so becomes it. Any thread; every call may wait for the disk.
namespace PrivateFile {

inline constexpr QFile::Permissions permissions = QFile::ReadOwner | QFile::WriteOwner;
inline constexpr QFile::Permissions folderPermissions = permissions | QFile::ExeOwner;

/// Makes the folder, with those above it that are missing. Throws Error.
void makeFolder(const QString &folder);

/// Replaces the file's content: at all times the old or the new one stands there, and once this returns the new one is
/// on the disk. Throws Error, also when the disk is full. The folder must be there.
void write(const QString &path, const QByteArray &content);

/// Waits until what was written is on the disk.
void flushToDisk(QFile &file);

/// A descriptor of a file to hold a lock on, made if need be; the caller closes it. Negative when it cannot be opened.
int openLock(const QString &path);

} // namespace PrivateFile

} // namespace talmo
