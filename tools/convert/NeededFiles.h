#pragma once

#include "convert/FileStamp.h"

#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

/// The files that a result was made of, as they were. To be made before any of them is read.
class NeededFiles
{
public:
    struct File {
        std::string path;
        FileStamp stamp;

        bool operator==(File const& other) const { return path == other.path && stamp == other.stamp; }
    };

    NeededFiles();

    /// Takes down a file that has been read, once.
    void add(std::string const& path);

    std::vector<File> const& files() const { return list; }

    /// Whether no file was changed since this object was made: otherwise nobody knows which state was read.
    bool areSettled() const { return settled; }

private:
    std::int64_t begin;
    bool settled = true;
    std::vector<File> list;
    std::unordered_set<std::string> known;
};
