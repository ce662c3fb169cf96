#pragma once

#include "support/ProgramDescription.h"

#include <string>
#include <string_view>
#include <vector>

/// Everything that is made of a program's description and its options, in one form for each reader.
class ProgramHelp
{
public:
    ProgramHelp(ProgramDescription const& description, std::vector<ProgramOption> const& options)
        : description(description), options(options)
    {
    }

    /// For --help: examples first.
    std::string text() const;

    /// The source of the manual page, in section 1.
    std::string manPage(std::string_view version) const;

    /// @param shell "bash", "zsh" or "fish"
    /// @return what the shell reads; empty for another shell
    std::string completion(std::string_view shell) const;

private:
    std::string bash() const;
    std::string zsh() const;
    std::string fish() const;

    ProgramDescription const& description;
    std::vector<ProgramOption> const& options;
};
