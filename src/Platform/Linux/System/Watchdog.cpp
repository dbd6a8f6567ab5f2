#include "Platform/Linux/System/Watchdog.h"

#include <unistd.h>

namespace talmo {

void killProcessAfter(unsigned seconds)
{
    ::alarm(seconds);
}

} // namespace talmo
