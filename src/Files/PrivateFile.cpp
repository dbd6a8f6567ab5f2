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

/// A rename is only safe from a power failure once the folder is on the disk as well.
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
    // Another process may have been faster.
    if (!QDir().mkdir(info.absoluteFilePath(), folderPermissions) && !QFileInfo(folder).isDir()) {
        throw Error(QStringLiteral("The folder %1 cannot be created.").arg(folder));
    }
}

} // namespace

void makeFolder(const QString &folder)
{
    makeMissing(folder);
    // In vain where it belongs to somebody else, whose affair it is then.
    ::chmod(QFile::encodeName(folder).constData(), S_IRWXU);
}

void write(const QString &path, const QByteArray &content)
{
    QSaveFile file(path); // Writes beside it, has that synced, and renames.
    // A disk that is full by then is noticed here: what goes wrong with what is still buffered, the commit may miss.
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
