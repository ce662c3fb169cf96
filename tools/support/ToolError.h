#pragma once

#include <stdexcept>
#include <string>

/// What every program returns to the shell.
enum class ExitCode {
    success = 0,
    failed = 1,     ///< An input can't be read, or an output can't be written.
    wrongUsage = 2, ///< The command line asks for what can't be.
    findings = 3,   ///< A check found something, and was to be strict.
};

/// A failure that the user can do something about: what() says what happened, where, and what to do.
class ToolError : public std::runtime_error
{
public:
    explicit ToolError(std::string const& text, ExitCode exitCode = ExitCode::failed)
        : std::runtime_error(text), exitCode(exitCode)
    {
    }

    ExitCode const exitCode;
};
