#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>

/// Bytes of a column, which grow without being cleared, and where the system can without being moved.
class FltColumnBytes
{
public:
    char const* data() const { return bytes.get(); } ///< The first one; null before there is room.
    char* data() { return bytes.get(); }             ///< The same.
    std::size_t size() const { return used; }        ///< Bytes that have a value.

    /// Makes room for so many bytes in all. @throw std::bad_alloc if there is none
    void reserve(std::size_t wanted)
    {
        if (wanted > static_cast<std::size_t>(std::numeric_limits<std::ptrdiff_t>::max()))
            throw std::bad_alloc();
        void* const larger = std::realloc(bytes.get(), std::max<std::size_t>(wanted, 1));
        if (larger == nullptr)
            throw std::bad_alloc();
        static_cast<void>(bytes.release());
        bytes.reset(static_cast<char*>(larger));
        capacity = wanted;
    }

    /// Makes room for so many more, and counts them in. @return where they are to stand
    char* extend(std::size_t size)
    {
        if (capacity - used < size)
            reserve(std::max(2 * capacity, used + size));
        used += size;
        return data() + used - size;
    }

    /// Keeps so many bytes and no room for more.
    void cut(std::size_t size)
    {
        reserve(size);
        used = size;
    }

private:
    struct Free {
        void operator()(char* memory) const { std::free(memory); }
    };

    std::unique_ptr<char, Free> bytes;
    std::size_t capacity = 0;
    std::size_t used = 0;
};
