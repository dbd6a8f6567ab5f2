#include "Platform/Linux/SettingsFile.h"

#include "Base/Error.h"
#include "Base/Log.h"
#include "Platform/Linux/FileDescriptor.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QSaveFile>

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace talmo {

namespace {

/// Nobody's settings are this large; something else is.
constexpr qint64 largestFile = qint64(16) * 1024 * 1024;
/// Another process that writes needs milliseconds.
constexpr auto lockPatience = std::chrono::seconds(2);

constexpr auto privateFile = QFile::ReadOwner | QFile::WriteOwner;
constexpr auto privateFolder = privateFile | QFile::ExeOwner;

/// A rename is only safe from a power failure once the folder is on the disk as well.
void synchroniseFolder(const QString &folder)
{
    const FileDescriptor descriptor(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (descriptor) {
        ::fsync(descriptor.get());
    }
}

void makeFolder(const QString &folder)
{
    const QFileInfo info(folder);
    if (info.isDir()) {
        return;
    }
    if (!QDir().mkpath(info.absolutePath()) || !QDir().mkdir(folder, privateFolder)) {
        throw Error(QStringLiteral("The folder %1 cannot be made.").arg(folder));
    }
}

/// Keeps other processes from writing at the same time, for as long as the descriptor lives. The kernel lets go of the
/// lock of a process that dies; a lock that is a file by itself would stay. One that hangs is waited for in vain: what
/// is written is whole even so, only a change of theirs may be lost.
FileDescriptor lockedFile(const QString &path)
{
    FileDescriptor descriptor(::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!descriptor) {
        throw Error(QStringLiteral("%1 cannot be opened.").arg(path));
    }
    const auto deadline = std::chrono::steady_clock::now() + lockPatience;
    while (::flock(descriptor.get(), LOCK_EX | LOCK_NB) != 0 && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5)); // The kernel cannot wait for a bounded time.
    }
    return descriptor;
}

} // namespace

SettingsFile::SettingsFile(QString path)
    : m_path(std::move(path))
{
}

QJsonObject SettingsFile::read()
{
    try {
        return load().value_or(QJsonObject());
    } catch (const Error &error) {
        generalLog().error("The settings cannot be read, and the defaults hold: %@", {error.localizedDescription()});
        return {};
    }
}

/// None when there is no file, or none any more because it could not be understood. Throws when it cannot be read.
std::optional<QJsonObject> SettingsFile::load()
{
    const QFileInfo info(m_path);
    if (!info.exists()) {
        return std::nullopt;
    }
    QFile file(m_path);
    // Opening a pipe would wait for somebody to write into it.
    if (!info.isFile() || !file.open(QFile::ReadOnly)) {
        throw Error(QStringLiteral("%1 cannot be opened.").arg(m_path));
    }
    const QByteArray bytes = file.read(std::min(file.size(), largestFile) + 1); // Reserves that much.
    const auto document = bytes.size() > largestFile ? QJsonDocument() : QJsonDocument::fromJson(bytes);
    if (!document.isObject()) {
        setAside();
        return std::nullopt;
    }
    return document.object();
}

void SettingsFile::setAside()
{
    constexpr int mostKept = 100;
    for (int number = 1; number <= mostKept; ++number) {
        const QString suffix = number == 1 ? QString() : QStringLiteral("-%1").arg(number);
        const QString name = m_path + QStringLiteral(".corrupt") + suffix;
        if (QFile::rename(m_path, name)) { // Replaces nothing.
            generalLog().error("The settings file is damaged. It was set aside as %@", {name});
            return;
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
        makeFolder(QFileInfo(m_path).absolutePath());
        const FileDescriptor lock = lockedFile(m_path + QStringLiteral(".lock"));
        QJsonObject content = load().value_or(all);
        for (auto change = m_unwritten.begin(); change != m_unwritten.end(); ++change) {
            content.insert(change.key(), change.value());
        }
        save(content);
        m_unwritten = {};
    } catch (const Error &error) {
        generalLog().error("The settings cannot be saved: %@", {error.localizedDescription()});
    }
}

void SettingsFile::save(const QJsonObject &content)
{
    QSaveFile file(m_path); // Writes beside it, has that synced, and renames.
    const auto bytes = QJsonDocument(content).toJson();
    // A disk that is full by then is noticed here: what goes wrong with what is still buffered, the commit may miss.
    const bool isWritten = file.open(QFile::WriteOnly) && file.setPermissions(privateFile) &&
                           file.write(bytes) == bytes.size() && file.flush() && file.size() == bytes.size();
    if (!isWritten || !file.commit()) {
        throw Error(QStringLiteral("%1: %2").arg(m_path, file.errorString()));
    }
    synchroniseFolder(QFileInfo(m_path).absolutePath());
}

} // namespace talmo
