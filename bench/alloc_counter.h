#pragma once

#include <cstddef>

namespace ts4bench {

/// Bytes requested from the global operator new since the program started;
/// linking alloc_counter.cpp replaces the global allocation functions.
std::size_t AllocatedBytes();

}  // namespace ts4bench
