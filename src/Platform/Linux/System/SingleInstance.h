#pragma once

#include "Files/FileLock.h"

#include <QString>

namespace talmo {

/// Ensures that only one Talmo runs per user and display. The kernel releases the lock when the process ends, however
/// it ends.
class SingleInstance {
public:
    /// `path`: the lock file, created if missing. If it cannot be created, this instance is treated as the first.
    explicit SingleInstance(const QString &path)
        : m_lock(path)
    {
    }

    bool isFirst() const { return m_lock.outcome() != FileLock::Outcome::HeldByAnother; }

    /// Asks the running instance to open its settings; waits a few seconds if it is still starting. False if it does
    /// not respond.
    static bool askForSettings();

private:
    FileLock m_lock;
};

} // namespace talmo
