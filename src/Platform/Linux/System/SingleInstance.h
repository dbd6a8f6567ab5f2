#pragma once

#include <QString>

namespace talmo {

/// Ensures that only one Talmo runs per user and display. The kernel releases the lock when the process ends, however
/// it ends.
class SingleInstance {
public:
    /// `path`: the lock file, created if missing. If it cannot be created, this instance is treated as the first.
    explicit SingleInstance(const QString &path);
    ~SingleInstance();
    SingleInstance(const SingleInstance &) = delete;
    SingleInstance &operator=(const SingleInstance &) = delete;

    bool isFirst() const { return m_isFirst; }

    /// Asks the running instance to open its settings; waits a few seconds if it is still starting. False if it does
    /// not respond.
    static bool askForSettings();

private:
    int m_file;
    bool m_isFirst;
};

} // namespace talmo
