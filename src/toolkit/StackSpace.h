#pragma once

#include <cstddef>

/// What is left of the stack of the thread that asks.
namespace StackSpace
{

/// Bytes below the caller's frame; 0 if the system doesn't say, or if the caller runs on a stack of its own
/// making.
std::size_t left();

/// Whether so many bytes are left. True where the system doesn't say.
bool holds(std::size_t bytes);

} // namespace StackSpace
