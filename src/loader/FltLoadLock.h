#pragma once

#include "FltLoader.h"

/// Held during a load, since the toolkit and the library's own registers are for one thread at a time. The
/// thread that holds it may take it again. In the child of fork() what other threads held is free.
class FltLoadLock
{
public:
    FltLoadLock();
    ~FltLoadLock();
    FltLoadLock(FltLoadLock const&) = delete;
    FltLoadLock& operator=(FltLoadLock const&) = delete;

    /// As FltLoader::setWait().
    static void setWait(FltLoader::Wait const* wait);
};
