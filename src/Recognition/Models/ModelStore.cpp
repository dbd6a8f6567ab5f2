#include "Recognition/Models/ModelStore.h"

#include "Base/DetailedError.h"
#include "Base/Log.h"
#include "Files/FileLock.h"
#include "Files/PrivateFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

namespace talmo {

namespace {

constexpr char workshopPattern[] = ".unpacking-*";
constexpr char discardedPattern[] = ".removed-*";

void rename(const QString &from, const QString &to)
{
    if (std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) != 0) {
        const QString reason = QString::fromLocal8Bit(std::strerror(errno)); // NOLINT: one thread writes.
        throw DetailedError(
            QStringLiteral(QT_TRANSLATE_NOOP(
                "Talmo", "Talmo cannot write to its folder for models. Check the folder's permissions.")),
            reason);
    }
}

/// Removes what a failed installation or a crashed process has left.
void clearAway(const QString &folder)
{
    const QDir models(folder);
    const auto leftovers = models.entryList({QLatin1String(workshopPattern), QLatin1String(discardedPattern)},
                                            QDir::Dirs | QDir::Hidden | QDir::NoSymLinks | QDir::NoDotAndDotDot);
    for (const auto &name : leftovers) {
        QDir(models.filePath(name)).removeRecursively();
    }
}

} // namespace

/// Held while models are installed or removed; removes leftovers before and after.
class ModelStore::Lock {
public:
    explicit Lock(QString folder)
        : m_folder(std::move(folder)),
          m_file(m_folder + QStringLiteral("/.lock"))
    {
        switch (m_file.outcome()) {
        case FileLock::Outcome::Impossible:
            throw Error(QStringLiteral(QT_TRANSLATE_NOOP(
                "Talmo", "Talmo cannot write to its folder for models. Check the folder's permissions.")));
        case FileLock::Outcome::HeldByAnother:
            throw Error(QStringLiteral(QT_TRANSLATE_NOOP(
                "Talmo", "Another model is being installed or removed. Try again when that has finished.")));
        case FileLock::Outcome::Locked:
            clearAway(m_folder);
        }
    }
    ~Lock() { clearAway(m_folder); }
    Lock(const Lock &) = delete;
    Lock &operator=(const Lock &) = delete;

private:
    QString m_folder;
    FileLock m_file;
};

ModelStore::ModelStore(QString folder)
    : m_folder(std::move(folder))
{
}

QString ModelStore::standardFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/talmo/models");
}

QString ModelStore::componentsFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/talmo/engines");
}

QStringList ModelStore::installed() const
{
    // An empty path would mean the current working directory.
    return m_folder.isEmpty() ? QStringList() : QDir(m_folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
}

QString ModelStore::path(const QString &name) const
{
    return m_folder + QLatin1Char('/') + name;
}

bool ModelStore::isInstalled(const QString &name) const
{
    return installed().contains(name);
}

namespace {

QString slowPath(const ModelStore &store, const QString &name)
{
    return store.path(QStringLiteral(".%1.slow").arg(name));
}

} // namespace

bool ModelStore::isKnownSlow(const QString &name) const
{
    return QFile::exists(slowPath(*this, name));
}

void ModelStore::noteSlow(const QString &name) const
{
    try {
        PrivateFile::write(slowPath(*this, name), {});
    } catch (const Error &error) { // It is tried again another time.
        generalLog().info("a slow model could not be noted: %@", {error.localizedDescription()});
    }
}

void ModelStore::makeFolder() const
{
    if (m_folder == standardFolder() || m_folder == componentsFolder()) {
        PrivateFile::makeFolder(QFileInfo(m_folder).path()); // The parent folder is Talmo's as well.
    }
    PrivateFile::makeFolder(m_folder);
}

std::shared_ptr<ModelStore::Lock> ModelStore::lock() const
{
    makeFolder();
    return std::make_shared<Lock>(m_folder);
}

QString ModelStore::partPath(const QString &name) const
{
    return path(QStringLiteral(".%1.part").arg(name));
}

QString ModelStore::makeWorkshop() const
{
    QTemporaryDir workshop(path(QStringLiteral(".unpacking-XXXXXX")));
    if (!workshop.isValid()) {
        throw DetailedError(
            QStringLiteral(QT_TRANSLATE_NOOP(
                "Talmo", "Talmo cannot write to its folder for models. Check the folder's permissions.")),
            workshop.errorString());
    }
    workshop.setAutoRemove(false);
    return workshop.path();
}

void ModelStore::takeIn(const QString &unpacked, const QString &name) const
{
    const QString place = path(name);
    if (QFileInfo(place).isSymLink()) {
        QFile::remove(place); // Only the link: its target is not Talmo's.
    } else if (QFileInfo::exists(place)) {
        rename(place, path(QStringLiteral(".removed-") + name));
    }
    rename(unpacked, place);
}

void ModelStore::remove(const QString &name) const
{
    // Installed names contain no path separators, so nothing outside the folder is affected; but a link may lead there.
    if (!isInstalled(name)) {
        throw Error(QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "The model “%1” is not installed.")).arg(name));
    }
    if (QFileInfo(path(name)).isSymLink()) {
        throw Error(
            QStringLiteral(
                QT_TRANSLATE_NOOP(
                    "Talmo",
                    "“%1” is a link to a model stored elsewhere. Delete the link in the folder for models yourself."))
                .arg(name));
    }
    const QString discarded = path(QStringLiteral(".removed-") + name);
    rename(path(name), discarded);
    if (!QDir(discarded).removeRecursively()) {
        throw Error(QStringLiteral(QT_TRANSLATE_NOOP("Talmo", "Some files of the model “%1” could not be deleted. "
                                                              "Check the permissions of the folder for models."))
                        .arg(name));
    }
}

void describeModel(const QString &folder, const ModelEntry &entry)
{
    const QJsonObject notes{{QStringLiteral("engine"), entry.engine},
                            {QStringLiteral("languages"), QJsonArray::fromStringList(entry.languages)},
                            {QStringLiteral("kind"), entry.kind},
                            {QStringLiteral("hotWords"), entry.hotWords},
                            {QStringLiteral("minLibrary"), entry.minLibrary},
                            {QStringLiteral("title"), entry.title},
                            {QStringLiteral("licence"), entry.licence},
                            {QStringLiteral("source"), entry.address.toString()}};
    PrivateFile::write(folder + QStringLiteral("/talmo-model.json"), QJsonDocument(notes).toJson());
}

ModelNotes ModelNotes::of(const QString &folder)
{
    QFile file(folder + QStringLiteral("/talmo-model.json"));
    const auto notes = file.open(QFile::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
    const auto text = [&notes](const char *key) { return notes.value(QLatin1String(key)).toString(); };
    return {text("engine"), text("kind"), text("minLibrary")};
}

QString innermostFolder(const QString &unpacked)
{
    QDir folder(unpacked);
    const auto entries = folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    const bool isWrapped = entries.size() == 1 && QFileInfo(folder.filePath(entries.first())).isDir();
    return isWrapped ? folder.filePath(entries.first()) : unpacked;
}

} // namespace talmo
