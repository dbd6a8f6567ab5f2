#pragma once

#include "Recognition/Models/ModelCatalogue.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace talmo {

/// The folder in which installed models lie, each in a folder of its own. Names that begin with a dot are not models:
/// what is still being made, and what is being thrown away. Every call may wait for the disk; any thread.
class ModelStore {
public:
    explicit ModelStore(QString folder);
    static QString standardFolder();

    QString folder() const { return m_folder; }
    /// Makes it, or an existing one private. Throws Error.
    void makeFolder() const;
    /// By name.
    QStringList installed() const;
    QString path(const QString &name) const;
    bool isInstalled(const QString &name) const;

    /// Only one process at a time installs or removes. Held until it is destroyed.
    class Lock;
    /// Makes the folder if need be. Throws Error when another process holds it, or the folder cannot be written.
    std::shared_ptr<Lock> lock() const;

    // The following want the lock to be held.

    /// Where a model's archive is downloaded to.
    QString partPath(const QString &name) const;
    /// A new, empty folder to unpack in; what an earlier one left is removed.
    QString makeWorkshop() const;
    /// Turns what was unpacked into the model of that name, all at once: until then nothing is seen of it. A model that
    /// is there already is replaced. Throws Error.
    void takeIn(const QString &unpacked, const QString &name) const;
    /// Throws Error when there is none of that name or it cannot be removed.
    void remove(const QString &name) const;

private:
    QString m_folder;
};

/// Notes in a model's folder what the recogniser must know of it and cannot see, and where it came from. Throws Error.
void describeModel(const QString &folder, const ModelEntry &entry);

/// The engine noted in a model's folder; empty if none is.
QString engineOfModel(const QString &folder);

/// The folder that holds the model in what came out of an archive, which often has one folder around it all.
QString innermostFolder(const QString &unpacked);

} // namespace talmo
