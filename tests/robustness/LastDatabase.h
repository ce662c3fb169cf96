#pragma once

#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <unistd.h>

/// A file that holds the database at hand, or its number, whatever happens to the process.
class LastDatabase
{
public:
    explicit LastDatabase(std::string const& name)
        : file(::open(name.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0644))
    {
        if (file < 0)
            throw std::runtime_error(name + ": cannot write");
    }
    ~LastDatabase() { ::close(file); }
    LastDatabase(LastDatabase const&) = delete;
    LastDatabase& operator=(LastDatabase const&) = delete;

    void keep(std::string const& bytes) const
    {
        if (::ftruncate(file, static_cast<off_t>(bytes.size())) != 0 ||
            ::pwrite(file, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
            throw std::runtime_error("cannot write: is the disk full?");
    }

private:
    int file;
};
