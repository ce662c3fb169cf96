#pragma once

#include <cstdint>

/// How much memory this process has held at most.
namespace PeakMemory
{

/// Begins anew with what it holds now, where the system can do that.
void reset();

/// In bytes, since reset() or the begin of the process.
std::uint64_t bytes();

} // namespace PeakMemory
