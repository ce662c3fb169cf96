#pragma once

#include <fcntl.h>
#include <unistd.h>

/// Closes standard input for as long as it lives, so that the next file to be opened has the number 0.
class ClosedInput
{
public:
    ClosedInput() : kept(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)) { ::close(STDIN_FILENO); }
    ~ClosedInput()
    {
        ::dup2(kept, STDIN_FILENO);
        ::close(kept);
    }

    ClosedInput(ClosedInput const&) = delete;
    ClosedInput& operator=(ClosedInput const&) = delete;

private:
    int kept;
};
