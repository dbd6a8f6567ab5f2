#include "Platform/Linux/System/SingleInstance.h"

#include "Base/Error.h"
#include "Control/ControlSocket.h"
#include "Files/PrivateFile.h"

#include <QDeadlineTimer>
#include <QThread>

#include <cerrno>
#include <sys/file.h>
#include <unistd.h>

namespace talmo {

namespace {

constexpr int patience = 5000;
constexpr unsigned long pause = 50;

/// One attempt; false if no instance is listening yet.
bool ask(QDeadlineTimer deadline)
{
    const auto left = static_cast<int>(deadline.remainingTime());
    const auto answer = ControlSocket::exchange(ControlSocket::settingsRequest(), left, left);
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

SingleInstance::SingleInstance(const QString &path)
    : m_file(PrivateFile::openLock(path)),
      m_isFirst(m_file < 0 || ::flock(m_file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)
{
}

SingleInstance::~SingleInstance()
{
    if (m_file >= 0) {
        ::close(m_file);
    }
}

bool SingleInstance::askForSettings()
{
    const QDeadlineTimer deadline(patience);
    while (!deadline.hasExpired()) {
        if (ask(deadline)) {
            return true;
        }
        QThread::msleep(pause);
    }
    return false;
}

} // namespace talmo
