#include "Platform/Linux/System/SingleInstance.h"

#include "Base/Error.h"
#include "Control/ControlSocket.h"

#include <QDeadlineTimer>
#include <QThread>

namespace talmo {

namespace {

constexpr int timeout = 5000;
constexpr unsigned long pause = 50;

/// One attempt; false if no instance is listening yet.
bool ask(QDeadlineTimer deadline)
{
    const auto left = static_cast<int>(deadline.remainingTime());
    const auto answer =
        ControlSocket::exchange(ControlSocket::plainRequest(ControlSocket::Command::OpenSettings), left, left);
    if (!answer) {
        return false;
    }
    try {
        ControlSocket::checkAnswer(*answer);
        return true;
    } catch (const Error &) {
        return false;
    }
}

} // namespace

bool SingleInstance::askForSettings()
{
    const QDeadlineTimer deadline(timeout);
    while (!deadline.hasExpired()) {
        if (ask(deadline)) {
            return true;
        }
        QThread::msleep(pause);
    }
    return false;
}

} // namespace talmo
