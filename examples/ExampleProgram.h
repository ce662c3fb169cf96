#pragma once

#include <functional>
#include <string>

namespace CLI
{
class App;
}

/// Writes a file: it takes its place when it is whole.
/// @throw ToolError if it can't be written
void saveFile(std::string const& bytes, std::string const& path);

/// What the programs that write databases have in common.
class ExampleProgram
{
public:
    /// Reads the command line, does the work, and says on standard error what went wrong.
    /// @return the exit code
    static int run(CLI::App& app, int argc, char** argv, std::function<void()> const& work);
};
