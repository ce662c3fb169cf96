#include "loader/FltLoadLock.h"

std::recursive_mutex& FltLoadLock::mutex()
{
    static std::recursive_mutex mutex;
    return mutex;
}
