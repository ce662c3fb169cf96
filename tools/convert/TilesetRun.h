#pragma once

#include "support/Program.h"

#include <string>
#include <vector>

/// Makes a tileset of what reports tell. None of the results is read.
class TilesetRun
{
public:
    /// @param program has to outlive this object
    explicit TilesetRun(Program const& program) : program(program) {}

    /// Writes a tileset into the directory of the results, and tells what it lacks.
    /// @param reports of all parts
    /// @param output  of the tileset: beside the results as the reports name them
    /// @return a failure if results are missing in it
    /// @throw ToolError, or FltGltfError
    ExitCode write(std::vector<std::string> const& reports, std::string const& output) const;

private:
    Program const& program;
};
