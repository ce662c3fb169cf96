#include "toolkit/StackSpace.h"

#include <pthread.h>

namespace
{

struct Stack {
    char const* lowest = nullptr;
    std::size_t size = 0;
};

Stack stackOfThisThread()
{
    pthread_attr_t attributes;
    if (::pthread_getattr_np(::pthread_self(), &attributes) != 0)
        return {};
    void* lowest = nullptr;
    std::size_t size = 0;
    bool const isKnown = ::pthread_attr_getstack(&attributes, &lowest, &size) == 0;
    ::pthread_attr_destroy(&attributes);
    return isKnown ? Stack{static_cast<char const*>(lowest), size} : Stack();
}

} // namespace

std::size_t StackSpace::left()
{
    // The system reads a file about its memory to answer, so it is asked once.
    thread_local Stack const stack = stackOfThisThread();
    auto const* const here = static_cast<char const*>(__builtin_frame_address(0));
    bool const isOnIt = here > stack.lowest && here <= stack.lowest + stack.size;
    return isOnIt ? static_cast<std::size_t>(here - stack.lowest) : 0;
}

bool StackSpace::holds(std::size_t bytes)
{
    std::size_t const room = left();
    return room == 0 || room >= bytes;
}
