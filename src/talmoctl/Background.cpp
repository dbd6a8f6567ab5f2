#include "talmoctl/Background.h"

#include <array>
#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace talmo::ctl {

namespace {

int waitForStatus(FileDescriptor fromChild, pid_t child)
{
    unsigned char status = EXIT_FAILURE;
    ssize_t got = 0;
    do {
        got = ::read(fromChild.get(), &status, 1);
    } while (got < 0 && errno == EINTR);
    if (got == 1) {
        return status;
    }
    int result = 0; // It ended without reporting a status, so its own exit status counts.
    ::waitpid(child, &result, 0);
    return WIFEXITED(result) ? WEXITSTATUS(result) : EXIT_FAILURE;
}

} // namespace

int Background::run(const std::function<int(std::shared_ptr<Background>)> &work)
{
    const auto background = std::make_shared<Background>();
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return work(background);
    }
    FileDescriptor fromChild(ends[0]);
    background->m_toParent = FileDescriptor(ends[1]);
    const pid_t child = ::fork();
    if (child > 0) {
        background->m_toParent = FileDescriptor();
        return waitForStatus(std::move(fromChild), child);
    }
    fromChild = FileDescriptor();
    return work(background);
}

void Background::release(int exitStatus)
{
    if (!m_toParent) {
        return;
    }
    ::setsid();
    const FileDescriptor nothing(::open("/dev/null", O_RDWR | O_CLOEXEC));
    if (nothing) {
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            ::dup2(nothing.get(), stream);
        }
    }
    const auto status = static_cast<unsigned char>(exitStatus);
    if (::write(m_toParent.get(), &status, 1) == 1) {
        m_toParent = FileDescriptor();
    }
}

} // namespace talmo::ctl
