#pragma once

#include "support/Program.h"

#include "loader/FltVisual.h"

#include <cstddef>
#include <string>
#include <vector>

/// What a conversion says of a result that doesn't hold all of its database.
class ConversionWarnings
{
public:
    /// @param program lives longer
    /// @param input   the database, as it was named
    ConversionWarnings(Program const& program, std::string input);

    /// Says that results of other databases aren't named. @param count how many; 0 says nothing
    void ofReferencesLeftOut(std::size_t count) const;

    /// Says what a form of files can't tell, by kind and count; nothing if there is nothing.
    /// @param form "VRML97"
    void ofLosses(std::string const& form, std::vector<FltOmission> const& losses) const;

private:
    Program const& program;
    std::string input;
};
