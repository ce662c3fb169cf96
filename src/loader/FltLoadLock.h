#pragma once

#include <mutex>

/// Held during a load, since the toolkit and the library's own registers are for one thread at a time. The
/// thread that holds it may take it again.
class FltLoadLock
{
public:
    FltLoadLock() : held(mutex()) {}

private:
    static std::recursive_mutex& mutex();

    std::lock_guard<std::recursive_mutex> held;
};
