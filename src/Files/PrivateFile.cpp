#include "Files/PrivateFile.h"

#include "Base/Error.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace talmo::PrivateFile {

namespace {

/// A rename survives a power failure only once its folder has been synced too.
void synchroniseFolder(const QString &folder)
{
    const int descriptor = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

void makeMissing(const QString &folder)
{
    const QFileInfo info(folder);
    if (info.isDir()) {
        return;
    }
    makeMissing(info.absolutePath());
    // Another process may have created it in the meantime.
    if (!QDir().mkdir(info.absoluteFilePath(), folderPermissions) && !QFileInfo(folder).isDir()) {
        throw Error(QStringLiteral("The folder %1 cannot be created.").arg(folder));
    }
}

} // namespace

void makeFolder(const QString &folder)
{
    makeMissing(folder);
    // Fails if another user owns the folder; its permissions are then up to them.
    ::chmod(QFile::encodeName(folder).constData(), S_IRWXU);
}

void write(const QString &path, const QByteArray &content)
{
    QSaveFile file(path); // Writes a temporary file, syncs it, and renames it.
    // Detects a full disk here: commit() may miss errors of data that is still buffered.
    const bool isWritten = file.open(QFile::WriteOnly) && file.setPermissions(permissions) &&
                           file.write(content) == content.size() && file.flush() && file.size() == content.size();
    if (!isWritten || !file.commit()) {
        throw Error(QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString()));
    }
    synchroniseFolder(QFileInfo(path).absolutePath());
}

void flushToDisk(QFile &file)
{
    file.flush();
    ::fsync(file.handle());
}

int openLock(const QString &path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor >= 0) {
        ::fchmod(descriptor, S_IRUSR | S_IWUSR);
    }
    return descriptor;
}

} // namespace talmo::PrivateFile
