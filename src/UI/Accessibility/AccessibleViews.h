#pragma once

namespace talmo {

/// Describes the views that Qt cannot describe by itself to screen readers: role, name and value. Call it before they
/// are created; once is enough. Main thread.
void describeViewsToScreenReaders();

} // namespace talmo
