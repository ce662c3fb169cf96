#pragma once

#include "support/Colours.h"
#include "support/ExitCode.h"
#include "support/OutputFile.h"
#include "support/ProgramDescription.h"

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace CLI
{
class App;
class ParseError;
} // namespace CLI

/// A command line that can be parsed and still can't be obeyed.
class UsageError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The command line of a program, the same for all: its options, help with examples first, version, manual
/// page, completions, exit codes, and errors that begin with the program's name.
///
///     Program program({"fltinfo", "say what databases hold", "FILE.flt...", ...});
///     program.flag("--json", isJson, "Print a JSON object.");
///     program.inputs(files);
///     return program.run(argc, argv, [&] { return describe(files); });
///
/// Every program also has --help, --version, -q and -v; and, for the build, --man and --completion SHELL,
/// which print the source of its manual page and its completions.
class Program
{
public:
    explicit Program(ProgramDescription description);

    /// Of the project: "9.6.1".
    static char const* version();

    ~Program();

    Program(Program const&) = delete;
    Program& operator=(Program const&) = delete;

    /// @name Options
    /// Names are given as "-q,--quiet". What an option is bound to has to live until run() has ended.
    /// @{

    /// @param isSet becomes true if the option is given
    void flag(std::string const& names, bool& isSet, std::string const& description);

    /// An option with a value, which may be left out.
    /// @param value      what is given; stays empty if the option isn't
    /// @param ifLeftOut  the value of the option without one
    /// @param isValue    whether the word after the option is its value: only then may a blank stand in place
    ///                   of "=", so that "--tree airfield.flt" means the file
    void optionalValue(std::string const& name, std::string& value, std::string const& ifLeftOut,
                       std::string const& placeholder, std::function<bool(std::string const&)> isValue,
                       std::string const& description);

    /// An option with a value.
    /// @param value      what it is if it isn't given, which the help tells unless it is empty
    /// @param fileEnding as in ProgramOption
    void value(std::string const& names, std::string& value, std::string const& placeholder,
               std::string const& description, std::string const& fileEnding = "");

    /// An option with a value that may be given several times.
    /// @param fileEnding as in ProgramOption. A directory that isn't there is reported, and harms nothing
    void values(std::string const& names, std::vector<std::string>& list, std::string const& placeholder,
                std::string const& description, std::string const& fileEnding = "");

    /// An option whose value is one of a few words.
    /// @param value what it is if it isn't given, which the help tells unless it is empty
    void choice(std::string const& names, std::string& value, std::vector<std::string> const& choices,
                std::string const& placeholder, std::string const& description);

    /// --no-clobber, for programs that write.
    /// @param existing what becomes of a result that is there already: replaced without the option
    void noClobberOption(OutputFile::Existing& existing);

    /// --color, which colours() obeys.
    void colourOption();

    /// The files that the program works on. Standard input is none of them: what a database names lies beside
    /// its file.
    /// @param areRequired whether there has to be one
    void inputs(std::vector<std::string>& files, bool areRequired = true);
    /// @}

    /// Reads the command line, does the work, and makes sure that standard output took everything.
    /// @param work what it throws is reported, and counts as a failure or as wrong usage
    /// @return the exit code of the process
    int run(int argc, char** argv, std::function<ExitCode()> const& work);

    /// @name For the work
    /// @{

    /// Reports failures of a part of the work, a sentence each.
    /// @return the exit code for them: success if there are none
    ExitCode reported(std::vector<std::string> const& problems) const;

    /// Does a part of the work, and reports what it throws.
    ExitCode guarded(std::function<ExitCode()> const& work) const;

    std::string const& name() const { return description.name; }
    void error(std::string const& text) const;  ///< Always printed.
    void warn(std::string const& text) const;   ///< Unless -q is given.
    void detail(std::string const& text) const; ///< If -v is given.
    /// The options of the command line with their values, in the order of the help: "--lod highest -b".
    /// @param except long names of those that don't matter
    std::string optionsGiven(std::vector<std::string> const& except) const;

    bool isQuiet() const { return quiet; }
    bool isVerbose() const { return verbose; }
    Colours colours() const;
    /// @}

private:
    struct OptionalValue;
    struct Directories;

    void add(std::string const& names, ProgramOption option);
    std::vector<std::string> wordsOf(int argc, char** argv) const;
    bool answersByItself(std::vector<std::string> const& words) const;
    void reportUsage(std::string const& problem) const;
    void refuseValuesOfFlags(std::vector<std::string> const& words) const;
    std::string problemOf(CLI::ParseError const& error, std::vector<std::string> const& words) const;
    std::string unknownOption(std::string const& word) const;
    void checkFiles() const;

    ProgramDescription description;
    std::vector<ProgramOption> options;
    std::vector<OptionalValue> optionalValues;
    std::vector<Directories> directories;
    std::vector<std::string> const* files = nullptr; ///< That the program works on.
    std::unique_ptr<CLI::App> app;
    bool quiet = false;
    bool verbose = false;
    std::string colourMode = "auto";
};
