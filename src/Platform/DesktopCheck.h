#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace talmo {

/// One thing that dictation depends on, and whether it is available.
struct CheckResult {
    /// One word: "sound".
    QString name;
    bool isOk = false;
    /// Whether nothing can be dictated without it.
    bool isNeeded = false;
    /// What was found, or what is missing.
    QString detail;
    /// What to do; empty if it is available.
    QString remedy;
};

struct DesktopCheckOptions {
    /// As in DesktopOptions.
    QStringList hotkeys;
    bool readsKeyboards = true;
    /// Talmo itself holds the keys then.
    bool isTalmoRunning = false;
};

/// What the session provides for dictation: desktop, key, paste, overlay and tray. Needs a QCoreApplication; waits for
/// answers for a second at most. Never throws.
QList<CheckResult> checkDesktop(const DesktopCheckOptions &options);

} // namespace talmo
