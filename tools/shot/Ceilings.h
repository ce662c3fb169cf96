#pragma once

#include <csignal>
#include <cstdint>
#include <string>
#include <sys/resource.h>
#include <vector>

/// Ends the process when a piece of work takes too much: for programs that are started by others, on files
/// that nobody has looked at yet. They hold while the object lives; one object at a time.
class Ceilings
{
public:
    struct Limits {
        unsigned processorSeconds;
        unsigned seconds;    ///< By the clock.
        std::uint64_t bytes; ///< Of memory, besides what is in use already.
    };

    /// @param who begins the message on standard error when time, memory or the stack runs out: "fltshot:
    ///            town.flt". The process ends with the exit code for a failure then. Memory that runs out in
    ///            this project's own code shows as std::bad_alloc; other libraries may not survive it.
    Ceilings(Limits const& limits, std::string const& who);
    ~Ceilings();

    Ceilings(Ceilings const&) = delete;
    Ceilings& operator=(Ceilings const&) = delete;

private:
    std::vector<char> signalStack; ///< Handlers need one where the stack itself has run out.
    stack_t stackBefore{};
    rlimit processorBefore{};
    rlimit memoryBefore{};
};
