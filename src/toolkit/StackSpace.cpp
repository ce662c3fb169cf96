#include "toolkit/StackSpace.h"

#include <pthread.h>

std::size_t StackSpace::left()
{
    pthread_attr_t attributes;
    if (::pthread_getattr_np(::pthread_self(), &attributes) != 0)
        return 0;
    void* lowest = nullptr;
    std::size_t size = 0;
    bool const isKnown = ::pthread_attr_getstack(&attributes, &lowest, &size) == 0;
    ::pthread_attr_destroy(&attributes);
    auto const* const begin = static_cast<char const*>(lowest);
    auto const* const here = static_cast<char const*>(__builtin_frame_address(0));
    bool const isOnIt = isKnown && here > begin && here <= begin + size;
    return isOnIt ? static_cast<std::size_t>(here - begin) : 0;
}
