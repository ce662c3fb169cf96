#pragma once

#include <csignal>
#include <sys/resource.h>

/// While this object lives no file of the process can grow beyond so many bytes: a disk that is full.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes) : signalBefore(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before);
        rlimit const limit = {bytes, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, signalBefore);
    }

    FileSizeLimit(FileSizeLimit const&) = delete;
    FileSizeLimit& operator=(FileSizeLimit const&) = delete;

private:
    rlimit before = {};
    void (*signalBefore)(int);
};
