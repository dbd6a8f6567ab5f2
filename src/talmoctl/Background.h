#pragma once

#include "Platform/Linux/System/FileDescriptor.h"

#include <functional>
#include <memory>

namespace talmo::ctl {

/// A program that answers its caller before it has ended. The work is done in a child process; the parent waits for the
/// exit status and ends with it, while the child may stay for what it still has to do.
class Background {
public:
    /// Runs `work` in a child and gives back the status for the parent to end with; in the child it does not return.
    /// To be called before there is any thread. Where there can be no child, the work is done here.
    static int run(const std::function<int(std::shared_ptr<Background>)> &work);

    /// From the child: the caller goes on now. Cuts the child loose from the caller's terminal and pipes.
    void release(int exitStatus);

private:
    FileDescriptor m_toParent;
};

} // namespace talmo::ctl
