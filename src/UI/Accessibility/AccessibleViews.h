#pragma once

namespace talmo {

/// Makes the views that Qt cannot describe by itself known to screen readers: what they are, what they say, how much
/// they show. Call it before they are created; once is enough. Main thread.
void describeViewsToScreenReaders();

} // namespace talmo
