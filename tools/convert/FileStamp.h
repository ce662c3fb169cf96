#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// By what a file is known to be as it was: its size, and when it was changed.
struct FileStamp {
    std::uint64_t size = 0;
    std::int64_t time = 0; ///< In nanoseconds, as the file system says it.

    bool operator==(FileStamp const& other) const { return size == other.size && time == other.time; }
    bool operator!=(FileStamp const& other) const { return !(*this == other); }

    /// Of a file that is there; nothing for one that isn't, or is no plain file.
    static std::optional<FileStamp> of(std::string const& path);
};
