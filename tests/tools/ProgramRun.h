#pragma once

#include "support/ScratchFolder.h"

#include <cstdlib>
#include <string>
#include <sys/wait.h>

/// What one of the project's programs did with a command line.
struct ProgramRun {
    int exitCode;
    std::string output;
    std::string errors;

    /// @param arguments in the form of the shell; none of them may hold a blank
    ProgramRun(std::string const& program, std::string const& arguments)
    {
        ScratchFolder const directory;
        std::string const command = VELLOREADER_PROGRAMS + program + " " + arguments + " </dev/null >" +
                                    (directory / "output") + " 2>" + (directory / "errors");
        int const status = std::system(command.c_str());
        exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        output = contentsOf(directory / "output");
        errors = contentsOf(directory / "errors");
    }
};
