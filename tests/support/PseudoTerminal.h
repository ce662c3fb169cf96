#pragma once

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <unistd.h>

/// Terminals that programs make themselves, as script(1) does. A bare chroot has none.
namespace PseudoTerminal
{

/// Why there can't be one; empty if there can.
inline std::string whyNot()
{
    auto const because = [](std::string const& what) {
        return "there is no pseudo-terminal: " + what + ": " + std::strerror(errno);
    };
    int const controller = ::posix_openpt(O_RDWR | O_NOCTTY);
    if (controller < 0)
        return because("/dev/ptmx");
    char name[128] = "its name";
    bool const isReady = ::grantpt(controller) == 0 && ::unlockpt(controller) == 0 &&
                         ::ptsname_r(controller, name, sizeof name) == 0;
    int const terminal = isReady ? ::open(name, O_RDWR | O_NOCTTY) : -1;
    std::string const reason = terminal < 0 ? because(name) : "";
    if (terminal >= 0)
        ::close(terminal);
    ::close(controller);
    return reason;
}

} // namespace PseudoTerminal
