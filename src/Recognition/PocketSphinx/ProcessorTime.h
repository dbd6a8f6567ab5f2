#pragma once

namespace talmo {

/// The processor time that this thread has used, in seconds: unlike time, it does not depend on what else is running.
double processorTimeOfThread();

} // namespace talmo
