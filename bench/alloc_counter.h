#pragma once

#include <cstddef>

namespace ts4bench {

/// Bytes requested from the global operator new since the program started;
/// linking alloc_counter.cpp replaces the global allocation functions.
std::size_t AllocatedBytes();

/// Bytes the C library hands out right now, freed blocks excluded, whoever
/// asked for them (Qt's strings and lists call malloc directly); large
/// blocks mapped on their own count too. Zero where the library does not tell.
std::size_t InUseBytes();

}  // namespace ts4bench
