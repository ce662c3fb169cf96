#pragma once

#include "support/OutputFile.h"
#include "support/Program.h"

#include "loader/FltLoader.h"

#include <string>
#include <vector>

/// The options of the loader that every program offers by the same names.
class LoaderOptions
{
public:
    /// Adds --texture-path, --log, --exact and --lod.
    explicit LoaderOptions(Program& program);

    LoaderOptions(LoaderOptions const&) = delete;
    LoaderOptions& operator=(LoaderOptions const&) = delete;

    /// A loader with these options, once the command line was parsed.
    FltLoader makeLoader() const;

    /// Whether the listing goes into one file, which can't hold that of several databases.
    bool hasNamedLog() const;

    /// Where the listing of a database goes; empty if there is none.
    std::string logOf(std::string const& database) const;

    /// The files that an output of the program must never replace: the database, its log, and all that it
    /// refers to.
    std::vector<KeptFile> keptFiles(std::string const& database, FltScene const& scene) const;

private:
    std::vector<std::string> texturePath;
    std::string log;
    std::string levelsOfDetail = "all";
    bool isExact = false;
};
