#pragma once

#include <cstddef>

/// What this process holds. A figure that the system doesn't tell throws std::runtime_error: a test that
/// judges by it has to fail then.
namespace ProcessUsage
{

/// Bytes of memory in use.
std::size_t memoryInUse();

/// The most bytes of memory that the process has held so far; a child of fork() begins with what its parent
/// holds.
std::size_t peakMemory();

/// Seconds of processor time that the process has taken so far, for reports: other processes don't change
/// them, but the machine does, so no test judges by them.
double processorSeconds();

/// Files that are open.
std::size_t openFiles();

} // namespace ProcessUsage
