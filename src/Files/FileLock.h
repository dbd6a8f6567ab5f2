#pragma once

#include <QString>

namespace talmo {

/// An exclusive lock on a file, which is created if missing. The kernel releases it when the process dies.
class FileLock {
public:
    enum class Outcome { Locked, HeldByAnother, Impossible };

    /// Never blocks.
    explicit FileLock(const QString &path);
    ~FileLock();
    FileLock(const FileLock &) = delete;
    FileLock &operator=(const FileLock &) = delete;

    Outcome outcome() const { return m_outcome; }

private:
    int m_descriptor;
    Outcome m_outcome;
};

} // namespace talmo
