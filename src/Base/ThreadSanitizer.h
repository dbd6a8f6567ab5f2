#pragma once

#if defined(__SANITIZE_THREAD__)
#define TALMO_THREAD_SANITIZER
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define TALMO_THREAD_SANITIZER
#endif
#endif

#ifdef TALMO_THREAD_SANITIZER
#include <sanitizer/tsan_interface.h>
#endif

/// Tells the thread sanitizer about synchronisation inside Qt: distributions build Qt uninstrumented, so neither its
/// event queue nor its mutexes are visible. No-ops without the sanitizer.
namespace talmo::ThreadSanitizer {

/// Whatever this thread has done happens before what follows an acquire() of the same address.
inline void release([[maybe_unused]] const void *address)
{
#ifdef TALMO_THREAD_SANITIZER
    __tsan_release(const_cast<void *>(address));
#endif
}

inline void acquire([[maybe_unused]] const void *address)
{
#ifdef TALMO_THREAD_SANITIZER
    __tsan_acquire(const_cast<void *>(address));
#endif
}

} // namespace talmo::ThreadSanitizer
