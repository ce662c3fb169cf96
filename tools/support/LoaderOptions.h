#pragma once

#include "support/OutputFile.h"

#include "loader/FltLoader.h"

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

/// The options of the loader that every program offers by the same names.
class LoaderOptions
{
public:
    /// Adds --texture-path, --log, --exact and --version.
    explicit LoaderOptions(CLI::App& app);

    /// A loader with these options, once the command line was parsed.
    FltLoader makeLoader() const;

    /// The files that an output of the program must never replace: the database, its log, and all that it
    /// refers to.
    std::vector<KeptFile> keptFiles(std::string const& database, FltScene const& scene) const;

private:
    std::vector<std::string> texturePath;
    std::string log;
    bool exact = false;
};
