#pragma once

#include <cstddef>

/// The memory of record objects. A database has millions of small ones, which are made one after the other
/// and go together: each takes the next place in a large block, and a block goes with its last record.
///
/// Records may be made and destroyed on any thread. In a build that looks for errors of memory each record
/// has an allocation of its own.
class FltRecordMemory
{
public:
    /// Room for an object. @throws std::bad_alloc if there is none
    static void* allocate(std::size_t size);

    /// Gives the room back. @param size as it was asked for
    static void free(void* object, std::size_t size);

    /// Bytes of a block.
    static constexpr std::size_t blockSize = std::size_t(2) << 20;

    /// Larger objects get an allocation of their own.
    static constexpr std::size_t largestObject = 4096;
};
