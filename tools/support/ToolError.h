#pragma once

#include "support/ExitCode.h"

#include <stdexcept>
#include <string>

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
