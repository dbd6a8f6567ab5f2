#pragma once

#include <cstdint>

namespace talmo::testbed {

/// How often the calling thread has allocated memory so far, in any way: new, malloc() or Qt's containers. A program
/// that links this counts from its start.
std::uint64_t allocationCount();

} // namespace talmo::testbed
