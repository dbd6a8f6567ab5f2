#include "Recognition/PocketSphinx/ProcessorTime.h"

#include <ctime>

namespace talmo {

double processorTimeOfThread()
{
    constexpr double nanosecond = 1e-9;
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * nanosecond;
}

} // namespace talmo
