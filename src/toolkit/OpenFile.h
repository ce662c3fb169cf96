#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <sys/types.h>
#include <utility>

/// A file or a directory that is open, or none. It is closed with the object.
class OpenFile
{
public:
    /// The device and the number of a file there: what it is, whatever names lead to it.
    using Identity = std::pair<dev_t, ino_t>;

    OpenFile() = default;

    /// Takes a descriptor over; -1 stands for none.
    explicit OpenFile(int descriptor) : file(descriptor) {}
    ~OpenFile();
    OpenFile(OpenFile&& other) noexcept : file(other.release()) {}
    OpenFile& operator=(OpenFile&& other) noexcept;
    OpenFile(OpenFile const&) = delete;
    OpenFile& operator=(OpenFile const&) = delete;

    bool isOpen() const { return file >= 0; }
    int descriptor() const { return file; }

    /// Gives the descriptor away, to be closed by the caller.
    int release() { return std::exchange(file, -1); }

    /// Another descriptor for the same open file; none if there are no more.
    OpenFile copy() const;

    /// Gives the descriptor to a stream, to be closed by the caller; null if there is none.
    FILE* intoStream(char const* mode);

    /// In bytes; 0 if that isn't known.
    std::uint64_t size() const;

    std::optional<Identity> identity() const;

private:
    int file = -1;
};
