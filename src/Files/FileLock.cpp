#include "Files/FileLock.h"

#include "Files/PrivateFile.h"

#include <cerrno>
#include <sys/file.h>
#include <unistd.h>

namespace talmo {

FileLock::FileLock(const QString &path)
    : m_descriptor(PrivateFile::openLock(path)),
      m_outcome(Outcome::Impossible)
{
    if (m_descriptor >= 0 && ::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0) {
        m_outcome = Outcome::Locked;
    } else if (m_descriptor >= 0 && errno == EWOULDBLOCK) {
        m_outcome = Outcome::HeldByAnother;
    }
}

FileLock::~FileLock()
{
    if (m_descriptor >= 0) {
        ::close(m_descriptor);
    }
}

} // namespace talmo
