#pragma once

#include "Platform/Linux/FileDescriptor.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>

namespace talmo {

/// Turns the signals that ask a program to end (interrupt, terminate, hang-up) into a Qt signal on the main thread.
/// One per process, made before any other thread is.
class QuitSignals final : public QObject {
    Q_OBJECT

public:
    QuitSignals();

Q_SIGNALS:
    void quitRequested();

private:
    FileDescriptor m_descriptor;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace talmo
