#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

namespace talmo {

/// Files and folders that only their owner can access. They are created private whatever the umask, and existing ones
/// are made private. Any thread; every call may block on the disk.
namespace PrivateFile {

inline constexpr QFile::Permissions permissions = QFile::ReadOwner | QFile::WriteOwner;
inline constexpr QFile::Permissions folderPermissions = permissions | QFile::ExeOwner;

/// Creates the folder and any missing parents. Throws Error.
void makeFolder(const QString &folder);

/// Replaces the file's content atomically; once this returns, the new content is on disk. Throws Error, also if the
/// disk is full. The folder must exist.
void write(const QString &path, const QByteArray &content);

/// Blocks until everything written is on disk.
void flushToDisk(QFile &file);

/// Opens a lock file, creating it if missing. The caller closes the descriptor; negative if it cannot be opened.
int openLock(const QString &path);

} // namespace PrivateFile

} // namespace talmo
