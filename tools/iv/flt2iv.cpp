// Converts OpenFlight databases into Open Inventor files.

#include "iv/ConversionRun.h"
#include "support/DatabaseFiles.h"
#include "support/FileEnding.h"
#include "support/OutputFile.h"
#include "support/ToolError.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

namespace
{

namespace fs = std::filesystem;

struct Options {
    std::vector<std::string> inputs;
    std::string output = "-";
    std::string format;
    std::string jobs;
    bool showsProgressAtOnce = false;
    ConversionRun::Options run;
};

ProgramDescription description()
{
    return {"flt2iv",
            "convert OpenFlight databases into Open Inventor files",
            "FILE.flt|DIR...",
            {"OpenFlight is the usual format of flight and driving simulators for terrain, buildings and "
             "vehicles; Open Inventor is a scene graph that viewers and programs on the Coin toolkit read "
             "directly.",
             "Of a directory all databases are converted, and those of the directories below it. Their files "
             "stand in the output's directory as they stood there.",
             "Files that the database refers to are converted with it. Textures are named in the result, not "
             "copied.",
             "A result takes its place when it is whole; what stood there before stays until then. When many "
             "databases are converted, those that can't be are reported in the end, and the rest is "
             "converted all the same."},
            {{"flt2iv airfield.flt", "look at the scene graph as text"},
             {"flt2iv -o airfield.iv airfield.flt", "write it into a file"},
             {"flt2iv -b -o airfield.iv tower.flt", "the same, smaller and faster to load"},
             {"flt2iv -o airfield.wrl airfield.flt", "write VRML97"},
             {"flt2iv --embed-textures -z -o one.iv airfield.flt", "all in one file, compressed"},
             {"flt2iv -o converted/ models/", "a whole directory"},
             {"flt2iv --if-newer -o converted/ models/", "again, but only what has changed"},
             {"flt2iv --xref file -o city.iv city.flt", "each referenced database in a file of its own"}},
            ExitCode::wrongUsage,
            {"fltshot", "fltinfo", "fltcheck"}};
}

/// Whether the result goes into a pipe or the like, which has no place beside it.
bool goesToStream(Options const& options)
{
    std::error_code ignored;
    fs::file_status const status = fs::status(options.output, ignored);
    return options.output == "-" ||
           (fs::exists(status) && !fs::is_regular_file(status) && !fs::is_directory(status));
}

/// Whether the results go into a directory under names of their own.
bool goesToDirectory(Options const& options)
{
    std::string const& output = options.output;
    bool const namesDirectory =
        !output.empty() && (output.back() == '/' || DatabaseFiles::isDirectory(output));
    return output != "-" && (namesDirectory || options.inputs.size() > 1 ||
                             DatabaseFiles::isDirectory(options.inputs.front()));
}

bool endsAsResult(std::string const& path)
{
    std::string const ending = FileEnding::of(path);
    return ending == ".iv" || ending == ".wrl";
}

bool endsInWrl(std::string const& output)
{
    return FileEnding::of(output) == ".wrl";
}

/// Reads --jobs, which is as many as there are processors if it isn't given.
std::size_t jobsOf(std::string const& text)
{
    constexpr std::size_t most = 999;
    if (text.empty())
        return std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, most);
    bool const isNumber = text.size() <= 3 && std::all_of(text.begin(), text.end(), [](char character) {
                              return character >= '0' && character <= '9';
                          });
    std::size_t const jobs = isNumber ? std::stoul(text) : 0;
    if (jobs == 0)
        throw UsageError("--jobs takes a number from 1 to 999, not " + text);
    return jobs;
}

/// Takes over the form of the results, from the ending of the output or --to.
void chooseForm(Options& options)
{
    bool const isNamed = options.output != "-" && !goesToDirectory(options);
    if (isNamed)
        OutputFile::checkEnding(options.output, {".iv", ".wrl"});
    SceneForm& form = options.run.conversion.form;
    form.isVrml = options.format.empty() ? isNamed && endsInWrl(options.output) : options.format == "wrl";
    if (isNamed && endsInWrl(options.output) && !form.isVrml)
        throw UsageError("the name " + options.output + " doesn't go with --to " + options.format);
    if (form.isVrml && form.isBinary)
        throw UsageError("VRML97 has no binary form: leave -b out, or take -z instead");
}

void chooseConversion(Options& options, FltLoader const& loader)
{
    ConversionOptions& conversion = options.run.conversion;
    conversion.references = loader.references;
    conversion.units = loader.units;
    options.run.jobs = jobsOf(options.jobs);
}

/// Refuses places where the results can't go.
void checkOutput(Options const& options)
{
    std::string const& output = options.output;
    auto const isOutput = [](std::string const& input) { // "flt2iv a.flt out.iv"
        return endsAsResult(input) && !FltLoader::canLoad(input);
    };
    auto const misplaced = std::find_if(options.inputs.begin(), options.inputs.end(), isOutput);
    if (output == "-" && misplaced != options.inputs.end())
        throw UsageError(*misplaced + " is no database. To write it, give -o " + *misplaced);
    if (goesToStream(options) && options.inputs.size() > 1)
        throw UsageError("several databases need a directory to go to: add -o DIR/");
    std::error_code ignored;
    bool const isThere = fs::exists(output, ignored);
    bool const isFile = isThere ? !DatabaseFiles::isDirectory(output) : endsAsResult(output);
    if (goesToDirectory(options) && isFile)
        throw UsageError(output + (isThere ? " is a file" : " names a file") +
                         ", and several databases need a directory to go to: give -o DIR/");
    bool const keeps = options.run.conversion.existing == OutputFile::Existing::keep;
    if (options.run.onlyIfNewer && keeps)
        throw UsageError("--if-newer and --no-clobber contradict each other");
}

/// Refuses options that don't go together.
void check(Options const& options, FltLoader const& loader)
{
    bool const namesReferences = loader.references == FltLoader::References::asFile;
    bool const keepsUnits = loader.units == FltLoader::Units::stored;
    bool const keepsOrigin = loader.origin == FltLoader::Origin::stored;
    if (goesToStream(options) && namesReferences)
        throw UsageError("--xref file writes several files: add -o FILE.iv or -o DIR/");
    if (goesToStream(options) && options.run.onlyIfNewer)
        throw UsageError("--if-newer needs a file to compare with: add -o FILE.iv or -o DIR/");
    if (namesReferences && keepsUnits)
        throw UsageError("--xref file needs --units metres: files that include each other share their unit");
    if (namesReferences && !keepsOrigin)
        throw UsageError("--xref file needs --origin stored: files that include each other share their zero");
    bool const isForComplete = namesReferences || keepsUnits || !keepsOrigin ||
                               loader.levelsOfDetail != FltLoader::LevelsOfDetail::all ||
                               loader.time != FltLoader::TimeOfDay::day;
    if (loader.exact && isForComplete)
        throw UsageError(
            "--exact has no choice of --xref file, --units stored, --origin centre, --lod and --time");
    bool const isMany = goesToDirectory(options) || namesReferences;
    if (isMany && loader.log && !loader.log->empty())
        throw UsageError("--log=PATH is for a single database: give --log without a name");
}

/// For the loader: shows how far a conversion is.
FltLoader::Progress shownOn(ProgressLine& line)
{
    return [&line](std::string const& file, std::uint64_t done, std::uint64_t all) {
        double const part = all == 0 ? 0 : static_cast<double>(done) / static_cast<double>(all);
        line.show(file + ": " + std::to_string(std::lround(part * 100)) + " %");
        return true;
    };
}

/// Converts one database in this process.
ExitCode convertOne(Program const& program, Options const& options, LoaderOptions const& loaderOptions)
{
    std::string const& input = options.inputs.front();
    if (options.output == "-" && DatabaseFiles::isDirectory(input))
        throw ToolError(input + ": this is a directory. Say where its databases shall go: -o DIR/");
    ConversionOptions const& conversion = options.run.conversion;
    if (!goesToStream(options)) {
        ConversionPlan plan(conversion.form.ending());
        plan.addFile(input, options.output);
        ConversionRun(program, loaderOptions, options.run).checkOutputs(plan);
    }
    DatabaseConverter const converter(program, loaderOptions, conversion);
    ConversionStatistics statistics;
    {
        ProgressLine line(options.run.progress);
        statistics = converter.convert({input, options.output, {}}, shownOn(line), [&line] { line.clear(); });
    }
    if (conversion.measures)
        std::fprintf(goesToStream(options) ? stderr : stdout, "%s\n%s\n",
                     ConversionStatistics::tableHead().c_str(), statistics.tableLine(input).c_str());
    return ExitCode::success;
}

ExitCode convertMany(Program const& program, Options& options, LoaderOptions const& loaderOptions)
{
    ConversionPlan plan(options.run.conversion.form.ending());
    bool const isFile = !goesToDirectory(options);
    if (isFile)
        plan.addFile(options.inputs.front(), options.output);
    else
        for (std::string const& input : options.inputs)
            plan.addInput(input, options.output);
    options.run.summarises = options.inputs.size() > 1 || DatabaseFiles::isDirectory(options.inputs.front());
    return ConversionRun(program, loaderOptions, options.run).run(plan);
}

ExitCode convert(Program const& program, Options& options, LoaderOptions const& loaderOptions)
{
    FltLoader const loader = loaderOptions.makeLoader();
    checkOutput(options);
    check(options, loader);
    chooseForm(options);
    chooseConversion(options, loader);
    if (program.isQuiet())
        options.run.progress = ProgressLine::Start::never;
    else if (options.showsProgressAtOnce)
        options.run.progress = ProgressLine::Start::atOnce;
    bool const isMany = goesToDirectory(options) || options.run.onlyIfNewer ||
                        loader.references == FltLoader::References::asFile;
    return isMany ? convertMany(program, options, loaderOptions)
                  : convertOne(program, options, loaderOptions);
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    ConversionOptions& conversion = options.run.conversion;
    Program program(description());
    program.value("-o,--output", options.output, "FILE.iv|DIR",
                  "Where to write; - is standard output. Several databases need a directory.", ".iv");
    program.choice("--to", options.format, {"iv", "wrl"}, "FORM",
                   "What to write: Open Inventor or VRML97. By default the ending of the output says it, and "
                   "a directory gets Open Inventor.");
    program.flag("-b,--binary", conversion.form.isBinary, "Write the binary form instead of text.");
    program.flag("-z,--compress", conversion.form.isCompressed,
                 "Compress the result by gzip. The toolkit reads it as it is.");
    program.flag("--embed-textures", conversion.embedsTextures,
                 "Write the pixels of textures into the result instead of their names.");
    LoaderOptions loaderOptions;
    loaderOptions.add(program, LoaderOptions::Programs::converters);
    program.value("-j,--jobs", options.jobs, "N",
                  "How many databases to convert at a time, in processes of their own. By default as many as "
                  "there are processors.");
    program.flag("--if-newer", options.run.onlyIfNewer,
                 "Pass over databases whose result is newer than they are, and than all that they refer to.");
    program.noClobberOption(conversion.existing);
    program.flag("--stat", conversion.measures,
                 "Print a table: nodes, faces, triangles, textures, bytes and seconds.");
    program.hiddenFlag("--progress-at-once", options.showsProgressAtOnce);
    loaderOptions.add(program, LoaderOptions::Programs::all);
    program.inputs(options.inputs);
    return program.run(argc, argv, [&] { return convert(program, options, loaderOptions); });
}
