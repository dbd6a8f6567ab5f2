#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <memory>

namespace talmo {

/// Turns the signals that ask a program to quit (interrupt, terminate, hang-up) into a Qt signal on the main thread.
/// They are caught, not blocked: child processes would inherit the blocked signals and could not be terminated. One per
/// process.
class QuitSignals final : public QObject {
    Q_OBJECT

public:
    /// From here on the signals no longer end the process. One that arrives before the object exists is not lost.
    static void install();

    /// Call install() first.
    QuitSignals();

Q_SIGNALS:
    void quitRequested();

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace talmo
