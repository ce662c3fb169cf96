#include "toolkit/ReservedRoom.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace
{

/// Files below it are as quick without room.
constexpr off_t smallestFile = 1 << 20;

constexpr off_t smallestStep = 4 << 20;
constexpr off_t largestStep = 64 << 20;

} // namespace

void ReservedRoom::keepFor(int file, off_t size, off_t count)
{
    if (isRefused || size < smallestFile || size + count <= end)
        return;
    off_t const step = std::max(std::clamp(size, smallestStep, largestStep), count);
    if (::fallocate(file, FALLOC_FL_KEEP_SIZE, size, step) == 0)
        end = size + step;
    else
        isRefused = errno != EINTR;
}

void ReservedRoom::giveBack(int file, off_t size)
{
    // To cut a file to its own size frees what lies behind it. A failure only leaves the room where it is.
    [[maybe_unused]] bool const isFreed = end <= size || ::ftruncate(file, size) == 0;
    *this = {};
}
