#pragma once

#include "Platform/Linux/FileDescriptor.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>

namespace talmo {

/// Turns the signals that ask a program to end (interrupt, terminate, hang-up) into a Qt signal on the main thread.
/// One per process.
class QuitSignals final : public QObject {
    Q_OBJECT

public:
    /// To be called before any other thread is made, Qt's own included: threads inherit what is held back.
    static void holdBack();

    QuitSignals();

Q_SIGNALS:
    void quitRequested();

private:
    FileDescriptor m_descriptor;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace talmo
