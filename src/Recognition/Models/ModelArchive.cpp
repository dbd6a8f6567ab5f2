#include "Recognition/Models/ModelArchive.h"

#include "Base/DetailedError.h"
#include "Files/PrivateFile.h"

#include <QDir>
#include <QFile>

#include <archive.h>
#include <archive_entry.h>

#include <memory>

namespace talmo {

namespace {

constexpr std::size_t readBlock = std::size_t(256) * 1024;
constexpr int deepestPath = 8;

struct ArchiveCloser {
    void operator()(archive *handle) const { archive_read_free(handle); }
};
using ArchiveHandle = std::unique_ptr<archive, ArchiveCloser>;

[[noreturn]] void refuse(const QString &why)
{
    throw DetailedError(
        QStringLiteral(QT_TRANSLATE_NOOP(
            "Talmo", "The downloaded file cannot be used. Try again; if it fails again, choose another recogniser.")),
        why);
}

[[noreturn]] void failToWrite(const QString &why)
{
    throw DetailedError(QStringLiteral(QT_TRANSLATE_NOOP(
                            "Talmo", "The download cannot be unpacked. Free some space on the disk, then try again.")),
                        why);
}

[[noreturn]] void refuseDamaged(archive *handle)
{
    const char *why = archive_error_string(handle);
    refuse(QStringLiteral("it is damaged (%1)").arg(why == nullptr ? QString() : QString::fromUtf8(why)));
}

ArchiveHandle openArchive(const QString &path)
{
    ArchiveHandle handle(archive_read_new());
    archive_read_support_format_tar(handle.get());
    archive_read_support_format_zip(handle.get());
    archive_read_support_filter_bzip2(handle.get());
    archive_read_support_filter_gzip(handle.get());
    archive_read_support_filter_xz(handle.get());
    archive_read_support_filter_zstd(handle.get());
    if (archive_read_open_filename(handle.get(), QFile::encodeName(path).constData(), readBlock) != ARCHIVE_OK) {
        refuseDamaged(handle.get());
    }
    return handle;
}

/// The entry's path within the folder; throws Error if it would lie outside.
QString placeOf(archive_entry *entry)
{
    const char *raw = archive_entry_pathname(entry);
    const QString name = raw == nullptr ? QString() : QFile::decodeName(raw);
    const QString place = QDir::cleanPath(name);
    const auto steps = name.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    // To Qt, “:name” is an absolute path too, which a leading “./” only hides.
    const bool isUnsafe = name.isEmpty() || QDir::isAbsolutePath(name) || QDir::isAbsolutePath(place) ||
                          name.contains(QLatin1Char('\\')) || steps.contains(QStringLiteral("..")) ||
                          steps.size() > deepestPath;
    if (isUnsafe) {
        refuse(QStringLiteral("“%1” is an unsafe path").arg(name));
    }
    return place;
}

/// Accepts regular files and folders only, and no links.
void requirePlain(archive_entry *entry, const QString &name)
{
    const auto kind = archive_entry_filetype(entry);
    const bool isLink = archive_entry_hardlink(entry) != nullptr || archive_entry_symlink(entry) != nullptr;
    if (isLink || (kind != AE_IFREG && kind != AE_IFDIR)) {
        refuse(QStringLiteral("“%1” is neither a file nor a folder").arg(name));
    }
}

class Unpacking {
public:
    Unpacking(const QString &path, const QString &folder, const UnpackingLimits &limits,
              const std::function<void(std::int64_t)> &progress, const std::stop_token &stop)
        : m_archive(openArchive(path)),
          m_folder(folder),
          m_limits(limits),
          m_progress(progress),
          m_stop(stop)
    {
    }

    void run()
    {
        archive_entry *entry = nullptr;
        int status = ARCHIVE_OK;
        while ((status = archive_read_next_header(m_archive.get(), &entry)) != ARCHIVE_EOF) {
            if (status != ARCHIVE_OK) {
                refuseDamaged(m_archive.get());
            }
            const QString place = placeOf(entry);
            requirePlain(entry, place);
            if (++m_files > m_limits.files) {
                refuse(QStringLiteral("it contains more than %1 files").arg(m_limits.files));
            }
            const bool isFolder = archive_entry_filetype(entry) == AE_IFDIR;
            makeFolder(isFolder ? place : QFileInfo(place).path());
            if (!isFolder) {
                unpackFile(place);
            }
        }
        if (m_files == 0) {
            refuse(QStringLiteral("it is empty"));
        }
    }

private:
    void makeFolder(const QString &place) const
    {
        try {
            PrivateFile::makeFolder(m_folder.filePath(place));
        } catch (const Error &) {
            failToWrite(QStringLiteral("cannot create the folder “%1”").arg(place));
        }
    }

    void unpackFile(const QString &place)
    {
        QFile file(m_folder.filePath(place));
        if (!file.open(QFile::WriteOnly | QFile::NewOnly | QFile::Unbuffered, PrivateFile::permissions)) {
            failToWrite(QStringLiteral("cannot write “%1” (%2)").arg(place, file.errorString()));
        }
        const void *block = nullptr;
        std::size_t size = 0;
        la_int64_t offset = 0;
        int status = ARCHIVE_OK;
        while ((status = archive_read_data_block(m_archive.get(), &block, &size, &offset)) == ARCHIVE_OK) {
            if (m_stop.stop_requested()) {
                throw Cancelled();
            }
            // Holes count as well: a sparse file can be a decompression bomb too.
            m_bytes = std::max(m_bytes, m_bytesBefore + offset) + static_cast<std::int64_t>(size);
            if (offset < 0 || m_bytes > m_limits.bytes) {
                refuse(QStringLiteral("it unpacks to more data than any model contains"));
            }
            const auto length = static_cast<qint64>(size);
            if (!file.seek(offset) || file.write(static_cast<const char *>(block), length) != length) {
                failToWrite(QStringLiteral("cannot write “%1” (%2)").arg(place, file.errorString()));
            }
            m_progress(archive_filter_bytes(m_archive.get(), -1));
        }
        if (status != ARCHIVE_EOF) {
            refuseDamaged(m_archive.get());
        }
        m_bytesBefore = m_bytes;
        PrivateFile::flushToDisk(file); // Must be on disk before the folder is renamed into place.
    }

    ArchiveHandle m_archive;
    QDir m_folder;
    UnpackingLimits m_limits;
    const std::function<void(std::int64_t)> &m_progress;
    const std::stop_token &m_stop;
    std::int64_t m_bytes = 0;
    std::int64_t m_bytesBefore = 0;
    int m_files = 0;
};

} // namespace

void unpackArchive(const QString &archivePath, const QString &folder, const UnpackingLimits &limits,
                   const std::function<void(std::int64_t)> &progress, const std::stop_token &stop)
{
    Unpacking(archivePath, folder, limits, progress, stop).run();
}

} // namespace talmo
