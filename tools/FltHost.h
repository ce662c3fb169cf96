#pragma once

#include <Inventor/SbString.h>
#include <iosfwd>
#include <memory>
#include <stdexcept>
#include <string>

class SoSeparator;

/// A failure that the user can do something about: what() says what happened, where, and what to do.
class FltHostError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// What the programs that load the library have in common: the toolkit's start, the conversion of one file,
/// and messages on standard error that begin with the program's name.
///
/// The library sends std::cout into its log and leaves it there, and prints its messages in several lines
/// each. Here std::cout's buffer is put back after every conversion, and a message becomes one line.
class FltHost
{
public:
    /// Exit codes of every program.
    enum ExitCode { success = 0, failed = 1, wrongUsage = 2 };

    /// Initialises the toolkit, and handles its messages from now on.
    /// @param quiet leaves remarks and warnings out; errors are always shown
    explicit FltHost(std::string programName, bool quiet = false);
    ~FltHost();

    FltHost(FltHost const&) = delete;
    FltHost& operator=(FltHost const&) = delete;

    /// Converts a database. Its directory is added to those in which the toolkit looks for textures.
    /// @return the root of the scene graph, with one reference that is the caller's
    /// @throw FltHostError if the file can't be read as OpenFlight
    SoSeparator* load(std::string const& path);

    /// Prints "program: text" on standard error.
    void error(std::string const& text) const;

    /// The same with "warning: " in front of the text, unless quiet.
    void warn(std::string const& text) const;

    /// Runs the body of a program, and turns what it throws into a message.
    /// @return the body's exit code, or failed
    template <typename Body>
    int run(Body const& body) const
    {
        try {
            return body();
        } catch (FltHostError const& problem) {
            error(problem.what());
        } catch (std::bad_alloc const&) {
            error("out of memory. The database is damaged, or too large for this machine.");
        } catch (std::exception const& problem) {
            error(std::string("unexpected failure: ") + problem.what());
        }
        return failed;
    }

    /// The name as the library needs it: with a directory, so that external references are found.
    static std::string withDirectory(std::string const& path);

private:
    static void takeToolkitMessage(class SoError const* message, void* host);

    std::string programName;
    bool quiet;
};
