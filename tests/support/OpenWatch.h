#pragma once

#include <stdexcept>
#include <string>
#include <sys/inotify.h>
#include <unistd.h>

/// Tells whether anybody opens a file.
class OpenWatch
{
public:
    explicit OpenWatch(std::string const& path) : descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        if (::inotify_add_watch(descriptor, path.c_str(), IN_OPEN) < 0)
            throw std::runtime_error("cannot watch " + path);
    }
    ~OpenWatch() { ::close(descriptor); }

    OpenWatch(OpenWatch const&) = delete;
    OpenWatch& operator=(OpenWatch const&) = delete;

    /// Whether it was opened since this was asked for the last time.
    bool wasOpened()
    {
        alignas(inotify_event) char events[4096];
        return ::read(descriptor, events, sizeof events) > 0;
    }

private:
    int descriptor;
};
