#pragma once

#include "Recognition/Models/ModelCatalogue.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace talmo {

/// The folder of installed models, one subfolder each. Names that begin with a dot are not models but installations and
/// removals in progress. Every call may block on the disk; any thread.
class ModelStore {
public:
    explicit ModelStore(QString folder);
    static QString standardFolder();
    /// For what the engines need besides models, such as their libraries.
    static QString componentsFolder();

    QString folder() const { return m_folder; }
    /// Creates the folder, or makes an existing one private. Throws Error.
    void makeFolder() const;
    /// Sorted by name.
    QStringList installed() const;
    QString path(const QString &name) const;
    bool isInstalled(const QString &name) const;

    /// Whether a model turned out to be too slow for this machine; it is not installed then.
    bool isKnownSlow(const QString &name) const;
    /// Failures are logged.
    void noteSlow(const QString &name) const;

    /// Ensures that only one process at a time installs or removes. Held until it is destroyed.
    class Lock;
    /// Creates the folder if missing. Throws Error if another process holds the lock, or the folder is not writable.
    std::shared_ptr<Lock> lock() const;

    // The following require the lock to be held.

    /// The partial file of a model's download.
    QString partPath(const QString &name) const;
    /// Creates an empty folder to unpack in. The lock removes it if it is left over.
    QString makeWorkshop() const;
    /// Moves an unpacked folder into place as the model of that name, in one step: nothing is visible until then.
    /// Replaces an existing model. Throws Error.
    void takeIn(const QString &unpacked, const QString &name) const;
    /// Throws Error if there is no model of that name, or it cannot be removed.
    void remove(const QString &name) const;

private:
    QString m_folder;
};

/// Writes to a model's folder what the engine must know about it and cannot detect, and where it came from. Throws
/// Error.
void describeModel(const QString &folder, const ModelEntry &entry);

/// What describeModel() wrote to a model's folder; empty where nothing is recorded.
struct ModelNotes {
    QString engine;
    QString kind;
    /// As in ModelEntry.
    QString minLibrary;

    static ModelNotes of(const QString &folder);
};

/// The folder that holds the model among the unpacked files: archives often have a single top-level folder.
QString innermostFolder(const QString &unpacked);

} // namespace talmo
