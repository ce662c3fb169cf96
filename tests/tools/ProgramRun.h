#pragma once

#include "support/TemporaryDirectory.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/wait.h>

/// The bytes of a file; none if it can't be read.
inline std::string readFile(std::string const& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// What one of the project's programs did with a command line.
struct ProgramRun {
    int exitCode;
    std::string output;
    std::string errors;

    /// @param arguments in the form of the shell; none of them may hold a blank
    ProgramRun(std::string const& program, std::string const& arguments)
    {
        TemporaryDirectory const directory;
        std::string const command = VELLOREADER_PROGRAMS + program + " " + arguments + " </dev/null >" +
                                    (directory / "output") + " 2>" + (directory / "errors");
        int const status = std::system(command.c_str());
        exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        output = readFile(directory / "output");
        errors = readFile(directory / "errors");
    }
};
