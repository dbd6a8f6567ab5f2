#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <memory>

namespace talmo {

/// Turns the signals that ask a program to end (interrupt, terminate, hang-up) into a Qt signal on the main thread.
/// They are caught, not blocked: a program that Talmo starts would begin with the same signals blocked, and nobody
/// could end it. One per process.
class QuitSignals final : public QObject {
    Q_OBJECT

public:
    /// From here on the signals no longer end the process. What comes before there is an object is not lost.
    static void install();

    /// install() comes first.
    QuitSignals();

Q_SIGNALS:
    void quitRequested();

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace talmo
