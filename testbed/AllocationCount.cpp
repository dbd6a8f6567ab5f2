#include "AllocationCount.h"

#include <cstddef>

#if defined(__has_feature)
#define TALMO_HAS(feature) __has_feature(feature)
#else
#define TALMO_HAS(feature) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || TALMO_HAS(address_sanitizer) ||                   \
    TALMO_HAS(thread_sanitizer)
#define TALMO_SANITIZED
#include <sanitizer/allocator_interface.h>
#endif

namespace {

thread_local std::uint64_t allocations = 0;

} // namespace

namespace talmo::testbed {

std::uint64_t allocationCount()
{
#ifdef TALMO_SANITIZED
    // The sanitizer has functions of its own in place of malloc().
    static const int hooks = __sanitizer_install_malloc_and_free_hooks(
        [](const volatile void *, std::size_t) { ++allocations; }, [](const volatile void *) {});
    static_cast<void>(hooks);
#endif
    return allocations;
}

} // namespace talmo::testbed

#ifndef TALMO_SANITIZED

// glibc's own functions, under the names that programs which replace malloc() may call.
extern "C" {

void *__libc_malloc(std::size_t size);                    // NOLINT(bugprone-reserved-identifier)
void *__libc_calloc(std::size_t count, std::size_t size); // NOLINT(bugprone-reserved-identifier)
void *__libc_realloc(void *memory, std::size_t size);     // NOLINT(bugprone-reserved-identifier)

void *malloc(std::size_t size) // NOLINT(readability-inconsistent-declaration-parameter-name)
{
    ++allocations;
    return __libc_malloc(size);
}

void *calloc(std::size_t count, std::size_t size) // NOLINT(readability-inconsistent-declaration-parameter-name)
{
    ++allocations;
    return __libc_calloc(count, size);
}

void *realloc(void *memory, std::size_t size) // NOLINT(readability-inconsistent-declaration-parameter-name)
{
    ++allocations;
    return __libc_realloc(memory, size);
}

} // extern "C"

#endif
