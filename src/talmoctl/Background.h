#pragma once

#include "Platform/Linux/System/FileDescriptor.h"

#include <functional>
#include <memory>

namespace talmo::ctl {

/// Lets a program return to its caller before it has ended. The work runs in a child process; the parent waits for the
/// exit status and exits with it, while the child may live on in the background.
class Background {
public:
    /// Runs `work` in a child process. Returns twice: in the parent with the status that the child has passed to
    /// release() or exited with, in the child with the result of `work`. If no pipe or child can be made, runs `work`
    /// in this process. Call it before any thread is started.
    static int run(const std::function<int(std::shared_ptr<Background>)> &work);

    /// Called in the child: lets the parent exit with this status, and detaches the child from the caller's terminal
    /// and pipes. Does nothing if there is no parent waiting.
    void release(int exitStatus);

private:
    FileDescriptor m_toParent;
};

} // namespace talmo::ctl
