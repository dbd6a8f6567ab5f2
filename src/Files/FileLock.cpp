#include "Files/FileLock.h"

#include "Files/PrivateFile.h"

#include <sys/file.h>
#include <unistd.h>

namespace talmo {

FileLock::FileLock(const QString &path)
    : m_descriptor(PrivateFile::openLock(path)),
      m_outcome(Outcome::CannotOpen)
{
    if (m_descriptor >= 0) {
        const bool isLocked = ::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0;
        m_outcome = isLocked ? Outcome::Locked : Outcome::HeldByAnother;
    }
}

FileLock::~FileLock()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

} // namespace talmo
