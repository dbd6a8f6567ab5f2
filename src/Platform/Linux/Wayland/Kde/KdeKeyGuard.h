#pragma once

#include <QProcess>
#include <QStringList>

namespace talmo {

/// Frees a shortcut of KDE's if Talmo crashes: KDE keeps it from the other programs otherwise, until somebody frees it.
/// A shell waits for the end of Talmo, which costs nothing. Main thread.
class KdeKeyGuard {
public:
    /// `action`: as KDE knows it.
    explicit KdeKeyGuard(const QStringList &action);
    /// Leaves the shortcut as it is.
    ~KdeKeyGuard();
    KdeKeyGuard(const KdeKeyGuard &) = delete;
    KdeKeyGuard &operator=(const KdeKeyGuard &) = delete;

    /// What happens to the guard when Talmo crashes; for tests.
    void handleCrash() { m_shell.closeWriteChannel(); }

private:
    QProcess m_shell;
};

} // namespace talmo
