#pragma once

#include <malloc.h>

/// What a program gives back between two pieces of work that take much memory, so that the second one doesn't
/// come on top of what the first one has left in pieces.
namespace FreedMemory
{

inline void giveBack()
{
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
}

} // namespace FreedMemory
