#include "loader/FltLoadLock.h"

#include <atomic>
#include <future>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{

std::mutex hostsLock;
std::atomic<int> waits = 0;

/// Gives the host's lock away during a wait.
constexpr FltLoader::Wait givesAway = {
    [] {
        ++waits;
        hostsLock.unlock();
        return static_cast<void*>(&hostsLock);
    },
    [](void* given) { static_cast<std::mutex*>(given)->lock(); },
};

/// Counts, since nothing is to be given away.
constexpr FltLoader::Wait counts = {
    [] {
        ++waits;
        return static_cast<void*>(nullptr);
    },
    [](void*) {},
};

/// Has the waits of a test done in some way.
class Waits
{
public:
    explicit Waits(FltLoader::Wait const& wait)
    {
        waits = 0;
        FltLoader::setWait(&wait);
    }
    ~Waits() { FltLoader::setWait(nullptr); }
    Waits(Waits const&) = delete;
    Waits& operator=(Waits const&) = delete;
};

/// Runs a function in a child process, which the system ends where it hangs.
/// @return the status that waitpid() tells
template <typename Function>
int statusOfChild(Function const& function)
{
    pid_t const child = ::fork();
    if (child == 0) {
        ::alarm(30);
        ::_exit(function() ? 0 : 1);
    }
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return status;
}

/// Holds the lock in a thread of its own, until it is told to let go.
class HoldingThread
{
public:
    HoldingThread() { begun.get_future().wait(); }
    ~HoldingThread()
    {
        end.set_value();
        thread.join();
    }
    HoldingThread(HoldingThread const&) = delete;
    HoldingThread& operator=(HoldingThread const&) = delete;

private:
    std::promise<void> begun, end;
    std::thread thread{[this] {
        FltLoadLock const lock;
        begun.set_value();
        end.get_future().wait();
    }};
};

} // namespace

TEST(FltLoadLock, IsFreeInAChildWhereAnotherThreadOfTheParentHeldIt)
{
    HoldingThread const other;
    EXPECT_EQ(statusOfChild([] {
                  FltLoadLock const lock, again;
                  return true;
              }),
              0);
}

TEST(FltLoadLock, IsHeldInAChildByTheThreadThatForkedAndHeldIt)
{
    Waits const waiting(counts);
    FltLoadLock const held, heldTwice;
    EXPECT_EQ(statusOfChild([] {
                  FltLoadLock const again;
                  std::thread([] { FltLoadLock const neverGot; }).detach();
                  while (waits == 0)
                      std::this_thread::yield();
                  return true;
              }),
              0);
}

TEST(FltLoadLock, CanBeGivenBackAndTakenByOthersInAChild)
{
    auto held = std::make_unique<FltLoadLock>();
    EXPECT_EQ(statusOfChild([&] {
                  held.reset();
                  std::thread([] { FltLoadLock const lock; }).join();
                  return true;
              }),
              0);
}

TEST(FltLoadLock, GivesTheHostsLockAwayWhileItWaits)
{
    Waits const waiting(givesAway);
    std::promise<void> isHeld;
    std::unique_lock<std::mutex> host(hostsLock);
    std::thread callback([&] {
        FltLoadLock const lock;
        isHeld.set_value();
        std::lock_guard<std::mutex> const needed(hostsLock);
    });
    isHeld.get_future().wait();
    {
        FltLoadLock const lock;
        EXPECT_EQ(waits, 1);
        EXPECT_FALSE(std::async(std::launch::async, [] { return hostsLock.try_lock(); }).get());
    }
    callback.join();
}

TEST(FltLoadLock, GivesNothingAwayWhereItDoesNotWait)
{
    Waits const waiting(counts);
    FltLoadLock const lock, again;
    EXPECT_EQ(waits, 0);
}
