#include "ThisProcess.h"

#include "Platform/Linux/System/ProcessMemory.h"

#include <ctime>

namespace talmo::benchmarks::ThisProcess {

double residentKilobytes()
{
    constexpr double kilobytes = 1e6 / 1024;
    return ProcessMemory::usedMegabytes() * kilobytes;
}

double processorSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

} // namespace talmo::benchmarks::ThisProcess
