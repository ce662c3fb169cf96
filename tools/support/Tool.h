#pragma once

#include "support/ToolError.h"

#include "loader/FltLoader.h"

#include <new>
#include <string>

class SoError;

/// What the programs have in common: the toolkit's start, loading with its messages, and messages on standard
/// error that begin with the program's name.
class Tool
{
public:
    /// Initialises the toolkit, and handles its messages from now on.
    /// @param quiet leaves remarks and warnings out; errors are always shown
    explicit Tool(std::string name, bool quiet = false);
    ~Tool();

    Tool(Tool const&) = delete;
    Tool& operator=(Tool const&) = delete;

    /// Loads a database and shows its messages.
    /// @throw FltLoadError
    FltScene load(FltLoader const& loader, std::string const& path) const;

    /// Shows the messages of a scene, one line each, the first of them alone if there are many.
    void show(FltScene const& scene) const;

    /// Prints "program: text" on standard error.
    void error(std::string const& text) const;

    /// The same with "warning: " in front of the text, unless quiet.
    void warn(std::string const& text) const;

    /// Runs the body of a program, and turns what it throws into a message.
    /// @return what main() returns: the body's exit code, or that of the failure
    template <typename Body>
    int run(Body const& body) const
    {
        return static_cast<int>(guarded(body));
    }

private:
    template <typename Body>
    ExitCode guarded(Body const& body) const
    {
        try {
            return body();
        } catch (ToolError const& problem) {
            error(problem.what());
            return problem.exitCode;
        } catch (FltLoadError const& problem) {
            error(problem.what());
            return problem.kind() == FltLoadError::Kind::refused ? ExitCode::wrongUsage : ExitCode::failed;
        } catch (std::bad_alloc const&) {
            error("out of memory. The database is damaged, or too large for this machine.");
        } catch (std::exception const& problem) {
            error(std::string("unexpected failure: ") + problem.what());
        }
        return ExitCode::failed;
    }

    static void takeToolkitMessage(SoError const* message, void* tool);

    std::string name;
    bool quiet;
};
