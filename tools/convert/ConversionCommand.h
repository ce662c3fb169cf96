#pragma once

#include "convert/ConversionForm.h"
#include "convert/ConversionOptions.h"
#include "convert/ConversionPlan.h"
#include "convert/DatabaseConverter.h"
#include "support/LoaderOptions.h"
#include "support/Program.h"

#include <string>
#include <string_view>
#include <vector>

/// The command line of a program that converts databases: which, how, and where the results go.
///
///     ConversionCommand command(program, {{".iv", "Open Inventor"}, {".wrl", "VRML97"}});
///     program.flag("-b,--binary", ...);
///     command.addOptions();
///     return program.run(argc, argv, [&] {
///         command.check();
///         return command.run(SceneConverter(program, command.loaderOptions(), ...));
///     });
class ConversionCommand
{
public:
    /// Adds the options that say where results go, and in which form.
    /// @param forms the first one is that of results without a name of their own, unless --to says otherwise
    ConversionCommand(Program& program, std::vector<ConversionForm> forms);

    ConversionCommand(ConversionCommand const&) = delete;
    ConversionCommand& operator=(ConversionCommand const&) = delete;

    /// Has the program not offer some options of the loader; see LoaderOptions. To be called first.
    void leaveOut(std::vector<std::string_view> const& names) { loading.leaveOut(names); }

    /// Adds the options that say how databases are converted, and the inputs.
    void addOptions();

    /// Makes sure that the command line can be obeyed, and takes over what depends on several options. What
    /// follows needs that.
    /// @throw UsageError
    void check();

    /// @name What the command line says
    /// @{
    LoaderOptions const& loaderOptions() const { return loading; }
    ConversionOptions& options() { return conversion; }
    ConversionOptions const& options() const { return conversion; }
    ConversionForm const& form() const { return forms[chosenForm]; }
    std::string const& outputName() const { return output; } ///< A file, a directory, or "-".
    bool goesToDirectory() const; ///< Whether results have names of their own, below the output.
    bool isPart() const { return !shard.empty(); }       ///< Whether a part is converted alone.
    bool isPlan() const { return !partsToPlan.empty(); } ///< Whether nothing is converted.
    /// @}

    /// Converts what the command line names.
    ExitCode run(DatabaseConverter const& converter);

private:
    bool hasPlaces() const;
    bool endsAsResult(std::string const& path) const;
    std::string fileOrDirectory() const;
    void checkOutput() const;
    void checkPlaces() const;
    void checkLoader(FltLoader const& loader) const;
    void chooseForm();
    ConversionPlan planned(TreePart part) const;
    ExitCode showParts() const;
    ExitCode convertOne(DatabaseConverter const& converter) const;
    ExitCode convertMany(DatabaseConverter const& converter);

    Program& program;
    std::vector<ConversionForm> const forms;
    std::size_t chosenForm = 0;
    LoaderOptions loading;
    ConversionOptions conversion;
    std::vector<std::string> inputs;
    std::string filesFrom;
    std::string root;
    std::string shard;
    std::string partsToPlan;
    std::string output = "-";
    std::string format;
    std::string jobs;
    bool showsProgressAtOnce = false;
};
