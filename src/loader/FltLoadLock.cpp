#include "loader/FltLoadLock.h"

std::recursive_mutex& FltLoadLock::mutex()
{
    static auto* const mutex = new std::recursive_mutex;
    return *mutex;
}
