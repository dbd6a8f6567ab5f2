#include "Platform/Linux/System/SettingsFile.h"

#include "Base/Error.h"
#include "Base/Log.h"
#include "Files/PrivateFile.h"
#include "Platform/Linux/System/FileDescriptor.h"

#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

#include <cerrno>
#include <sys/file.h>
#include <sys/stat.h>

namespace talmo {

namespace {

/// Larger than any real settings file.
constexpr qint64 largestFile = qint64(16) * 1024 * 1024;
/// Other processes need only milliseconds to write.
constexpr auto lockTimeout = std::chrono::seconds(2);

class Damaged : public Error {
public:
    using Error::Error;
};

/// Keeps other processes from writing for as long as the descriptor lives. The kernel releases the lock of a process
/// that dies, whereas a lock file would stay. If a process hangs with the lock, this times out and continues without
/// it: the file still stays whole, and only a change of the other process may be lost.
FileDescriptor lockedFile(const QString &path)
{
    FileDescriptor descriptor(PrivateFile::openLock(path));
    if (!descriptor) {
        throw Error(QStringLiteral("Cannot open %1.").arg(path));
    }
    const auto deadline = std::chrono::steady_clock::now() + lockTimeout;
    while (::flock(descriptor.get(), LOCK_EX | LOCK_NB) != 0 && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5)); // The kernel has no timeout for this.
    }
    return descriptor;
}

} // namespace

SettingsFile::SettingsFile(QString path, QJsonObject inPlaceOfDamaged)
    : m_path(std::move(path)),
      m_inPlaceOfDamaged(std::move(inPlaceOfDamaged))
{
}

QJsonObject SettingsFile::read()
{
    try {
        return load().value_or(QJsonObject());
    } catch (const Damaged &) {
        replaceDamaged();
    } catch (const Error &error) {
        generalLog().error("The settings cannot be read: %@", {error.localizedDescription()});
    }
    if (!m_inPlaceOfDamaged.isEmpty()) {
        generalLog().error("Using the default settings, except for these: %s",
                           {QString::fromUtf8(QJsonDocument(m_inPlaceOfDamaged).toJson(QJsonDocument::Compact))});
    }
    return m_inPlaceOfDamaged;
}

/// None if there is no file. Throws Damaged if its content is invalid, and Error if it cannot be read.
std::optional<QJsonObject> SettingsFile::load() const
{
    struct stat status{};
    // Any error but absence, such as a folder without permission, means that there may be a file.
    if (::lstat(QFile::encodeName(m_path).constData(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR)) {
        return std::nullopt;
    }
    QFile file(m_path);
    // Opening a pipe would block until it is opened for writing.
    if (!QFileInfo(m_path).isFile() || !file.open(QFile::ReadOnly)) {
        throw Error(QStringLiteral("Cannot open %1.").arg(m_path));
    }
    const QByteArray bytes = file.read(std::min(file.size(), largestFile) + 1); // read() reserves that much.
    if (file.error() != QFile::NoError) {
        throw Error(QStringLiteral("Cannot read %1.").arg(m_path));
    }
    const auto document = bytes.size() > largestFile ? QJsonDocument() : QJsonDocument::fromJson(bytes);
    if (!document.isObject()) {
        throw Damaged(QStringLiteral("%1 is damaged.").arg(m_path));
    }
    return document.object();
}

/// The replacement values are saved at once, so that they still apply at the next start, when the file would be
/// missing.
void SettingsFile::replaceDamaged()
{
    try {
        const QString name = setAside();
        if (m_inPlaceOfDamaged.isEmpty()) {
            return;
        }
        try {
            save(m_inPlaceOfDamaged);
        } catch (const Error &) {
            QFile::rename(name, m_path); // At the next start, the damaged file leads here again.
            throw;
        }
    } catch (const Error &error) {
        generalLog().error("The damaged settings cannot be replaced: %@", {error.localizedDescription()});
    }
}

/// Returns the new name.
QString SettingsFile::setAside()
{
    constexpr int mostKept = 100;
    for (int number = 1; number <= mostKept; ++number) {
        const QString suffix = number == 1 ? QString() : QStringLiteral("-%1").arg(number);
        const QString name = m_path + QStringLiteral(".corrupt") + suffix;
        if (QFile::rename(m_path, name)) { // Does not overwrite.
            QFile::setPermissions(name, PrivateFile::permissions);
            generalLog().error("The settings file is damaged. It was set aside as %@", {name});
            return name;
        }
    }
    throw Error(QStringLiteral("%1 is damaged and cannot be set aside.").arg(m_path));
}

void SettingsFile::write(const QJsonObject &changes, const QJsonObject &all)
{
    for (auto change = changes.begin(); change != changes.end(); ++change) {
        m_unwritten.insert(change.key(), change.value());
    }
    try {
        PrivateFile::makeFolder(QFileInfo(m_path).absolutePath());
        const FileDescriptor lock = lockedFile(m_path + QStringLiteral(".lock"));
        QJsonObject content = contentToChange(all);
        for (auto change = m_unwritten.begin(); change != m_unwritten.end(); ++change) {
            content.insert(change.key(), change.value());
        }
        save(content);
        m_unwritten = {};
    } catch (const Error &error) {
        generalLog().error("The settings cannot be saved: %@", {error.localizedDescription()});
    }
}

QJsonObject SettingsFile::contentToChange(const QJsonObject &all)
{
    try {
        return load().value_or(all);
    } catch (const Damaged &) {
        setAside();
    }
    QJsonObject content = m_inPlaceOfDamaged;
    for (auto value = all.begin(); value != all.end(); ++value) {
        content.insert(value.key(), value.value());
    }
    return content;
}

void SettingsFile::save(const QJsonObject &content) const
{
    PrivateFile::write(m_path, QJsonDocument(content).toJson());
}

} // namespace talmo
