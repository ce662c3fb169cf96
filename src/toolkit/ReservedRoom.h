#pragma once

#include <sys/types.h>

/// Room on the disk beyond the end of a file that grows to an unknown size. The file system then books large
/// pieces and no single pages; the size of the file stays what was written.
///
/// Room is only a wish: where the system has none to give (no space, a quota, a pipe, a file system that
/// can't) writing goes on without it.
class ReservedRoom
{
public:
    /// Sees to room for @p count bytes at the end of a file, if it is large enough to be worth it.
    /// @param file  its descriptor, which stays the caller's
    /// @param size  of the file so far
    void keepFor(int file, off_t size, off_t count);

    /// Gives back what is left, and begins anew. The file keeps its @p size bytes.
    void giveBack(int file, off_t size);

private:
    off_t end = 0; ///< Of the room that was asked for last; 0 if there is none.
    bool isRefused = false;
};
