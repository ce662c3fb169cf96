#include "ExampleProgram.h"

#include "support/OutputFile.h"
#include "support/ToolError.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>

void saveFile(std::string const& bytes, std::string const& path)
{
    OutputFile output(path);
    std::fwrite(bytes.data(), 1, bytes.size(), output.stream());
    output.commit();
}

int ExampleProgram::run(CLI::App& app, int argc, char** argv, std::function<void()> const& work)
{
    auto const fail = [&](std::exception const& problem, ExitCode exitCode) {
        std::fprintf(stderr, "%s: %s\n", app.get_name().c_str(), problem.what());
        return static_cast<int>(exitCode);
    };
    app.set_version_flag("--version", "VelloReader " VELLOREADER_VERSION);
    try {
        app.parse(argc, argv);
        work();
        return static_cast<int>(ExitCode::success);
    } catch (CLI::ParseError const& error) {
        return static_cast<int>(app.exit(error) == 0 ? ExitCode::success : ExitCode::wrongUsage);
    } catch (ToolError const& problem) {
        return fail(problem, problem.exitCode);
    } catch (std::exception const& problem) {
        return fail(problem, ExitCode::failed);
    }
}
