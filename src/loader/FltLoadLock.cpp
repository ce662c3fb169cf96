#include "loader/FltLoadLock.h"

#include <atomic>
#include <mutex>
#include <new>
#include <pthread.h>

namespace
{

std::recursive_mutex mutex;
thread_local int timesHeld = 0;
std::atomic<FltLoader::Wait const*> hostsWait = nullptr;

/// A child process begins with one thread: the others can't give back there what they held. The mutex knows
/// its owner by a number that is another one in the child.
void beginAnew()
{
    new (&mutex) std::recursive_mutex;
    for (int times = 0; times < timesHeld; ++times)
        mutex.lock();
}

[[maybe_unused]] int const registered = ::pthread_atfork(nullptr, nullptr, beginAnew);

void waitForTheOthers()
{
    FltLoader::Wait const* const wait = hostsWait;
    void* const given = wait != nullptr ? wait->begin() : nullptr;
    mutex.lock();
    if (wait != nullptr)
        wait->end(given);
}

} // namespace

FltLoadLock::FltLoadLock()
{
    if (!mutex.try_lock())
        waitForTheOthers();
    ++timesHeld;
}

FltLoadLock::~FltLoadLock()
{
    --timesHeld;
    mutex.unlock();
}

void FltLoadLock::setWait(FltLoader::Wait const* wait)
{
    hostsWait = wait;
}
