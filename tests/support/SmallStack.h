#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <pthread.h>
#include <stdexcept>

/// Runs something in a thread that has a stack of so many bytes.
inline void runOnStackOf(std::size_t bytes, std::function<void()> const& run)
{
    // A stack of our own: the system may give a thread one that an earlier thread left, of any size.
    std::size_t const page = 4096;
    std::unique_ptr<char[]> const memory(new char[bytes + page]);
    auto const address = reinterpret_cast<std::uintptr_t>(memory.get());
    void* const stack = memory.get() + (page - address % page) % page;
    auto const call = [](void* given) -> void* {
        (*static_cast<std::function<void()> const*>(given))();
        return nullptr;
    };
    pthread_attr_t attributes;
    ::pthread_attr_init(&attributes);
    pthread_t thread;
    std::function<void()> copy = run;
    bool const hasBegun = ::pthread_attr_setstack(&attributes, stack, bytes) == 0 &&
                          ::pthread_create(&thread, &attributes, call, &copy) == 0;
    ::pthread_attr_destroy(&attributes);
    if (!hasBegun)
        throw std::runtime_error("no thread can be made with so small a stack");
    ::pthread_join(thread, nullptr);
}
