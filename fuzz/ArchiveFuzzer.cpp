// Model archives from any source: whatever they contain, only plain files within the folder and the limits are written.

#include "Base/Error.h"
#include "Fuzzing.h"
#include "Recognition/Models/ModelArchive.h"
#include "Recognition/Models/ModelStore.h"

#include <QDirIterator>
#include <QFileInfo>

#include <cstring>

#include <sys/stat.h>

using namespace talmo;
using fuzz::require;

namespace {

// Small, so that small inputs reach them.
constexpr UnpackingLimits limits{2000, 5};
constexpr int deepest = 8;

/// Corrects the checksums, since a changed tar header with a wrong one is rejected before its content is looked at.
void mendTarChecksums(QByteArray &bytes)
{
    constexpr int block = 512;
    constexpr int magicAt = 257;
    constexpr int checksumAt = 148;
    constexpr int checksumSize = 8;
    for (qsizetype at = 0; at + block <= bytes.size(); at += block) {
        char *header = bytes.data() + at;
        if (std::memcmp(header + magicAt, "ustar", 5) != 0) {
            continue;
        }
        std::memset(header + checksumAt, ' ', checksumSize);
        unsigned sum = 0;
        for (int index = 0; index < block; ++index) {
            sum += static_cast<unsigned char>(header[index]);
        }
        std::snprintf(header + checksumAt, checksumSize, "%06o", sum);
    }
}

void checkFiles(const QString &folder)
{
    QDirIterator iterator(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                          QDirIterator::Subdirectories);
    qint64 bytes = 0;
    int files = 0;
    while (iterator.hasNext()) {
        const QByteArray path = QFile::encodeName(iterator.next());
        struct stat status{};
        require(::lstat(path.constData(), &status) == 0);
        require(S_ISREG(status.st_mode) || S_ISDIR(status.st_mode));
        require((status.st_mode & (S_ISUID | S_ISGID)) == 0);
        require(path.mid(folder.size() + 1).count('/') < deepest);
        if (S_ISREG(status.st_mode)) {
            require(status.st_nlink == 1);
            ++files;
            bytes += status.st_size;
        }
    }
    require(files <= limits.files && bytes <= limits.bytes);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const QString place = fuzz::scratchFolder() + QStringLiteral("/place");
    static const QString archive = fuzz::scratchFolder() + QStringLiteral("/archive");
    const QString folder = place + QStringLiteral("/unpacked");
    QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    mendTarChecksums(bytes);
    fuzz::writeFile(archive, bytes);
    require(QDir().mkpath(folder));
    std::int64_t progress = 0;
    try {
        unpackArchive(archive, folder, limits, [&progress](std::int64_t read) { progress = read; }, {});
        require(!QDir(folder).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot));
    } catch (const Error &error) {
        require(!error.localizedDescription().isEmpty());
    }
    require(progress >= 0 && progress <= bytes.size());
    checkFiles(folder);
    require(QDir(place).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot) ==
            QStringList(QStringLiteral("unpacked")));
    // What Qt takes for the name of a resource would be written to the current folder.
    require(QDir().entryList({QStringLiteral(":*")}, QDir::AllEntries | QDir::Hidden | QDir::System).isEmpty());
    require(innermostFolder(folder).startsWith(folder));
    require(QDir(place).removeRecursively());
    return 0;
}
