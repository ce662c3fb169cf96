#include "convert/ConversionCommand.h"

#include "convert/ConversionRun.h"
#include "convert/FileList.h"
#include "convert/PartSizes.h"
#include "convert/TreePart.h"
#include "support/DatabaseFiles.h"
#include "support/FileEnding.h"
#include "support/OutputFile.h"
#include "support/ToolError.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <thread>
#include <utility>

namespace
{

namespace fs = std::filesystem;

/// Options that have no effect on what results hold.
std::vector<std::string> const withoutEffect = {"--output", "--jobs",  "--if-newer",   "--no-clobber",
                                                "--stat",   "--quiet", "--verbose",    "--report",
                                                "--shard",  "--root",  "--files-from", "--progress"};

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

/// For the loader: shows how far a conversion is.
FltLoader::Progress shownOn(ProgressLine& line)
{
    return [&line](std::string const& file, std::uint64_t done, std::uint64_t all) {
        double const part = all == 0 ? 0 : static_cast<double>(done) / static_cast<double>(all);
        line.show(file + ": " + std::to_string(std::lround(part * 100)) + " %");
        return true;
    };
}

std::string wordOf(ConversionForm const& form)
{
    return form.ending.substr(1);
}

/// What to write, and that a directory gets the first form.
std::string helpOf(std::vector<ConversionForm> const& forms)
{
    std::string names;
    for (std::size_t i = 0; i < forms.size(); ++i)
        names += (i == 0 ? "" : i + 1 < forms.size() ? ", " : " or ") + forms[i].name;
    return "What to write: " + names +
           ". By default the ending of the output says it, and a directory gets " + forms.front().name + ".";
}

std::size_t formNamed(std::vector<ConversionForm> const& forms, std::string const& ending)
{
    auto const form = std::find_if(forms.begin(), forms.end(),
                                   [&](ConversionForm const& one) { return one.ending == ending; });
    return form != forms.end() ? static_cast<std::size_t>(form - forms.begin()) : 0;
}

} // namespace

ConversionCommand::ConversionCommand(Program& program, std::vector<ConversionForm> forms)
    : program(program), forms(std::move(forms))
{
    std::string const& usual = this->forms.front().ending;
    std::vector<std::string> words;
    for (ConversionForm const& form : this->forms)
        words.push_back(wordOf(form));
    program.value("-o,--output", output, "FILE" + usual + "|DIR",
                  "Where to write; - is standard output. Several databases need a directory.", usual);
    program.choice("--to", format, words, "FORM", helpOf(this->forms));
}

void ConversionCommand::addOptions()
{
    loading.add(program, LoaderOptions::Programs::converters);
    program.value("-j,--jobs", jobs, "N",
                  "How many databases to convert at a time, in processes of their own. By default as many as "
                  "there are processors.");
    program.flag("--if-newer", conversion.onlyIfNewer,
                 "Pass over databases whose result is newer than they are, and than all that they refer to.");
    program.value("--files-from", filesFrom, "LIST",
                  "Convert the databases that a file names, one a line, by their places below --root; - is "
                  "standard input.",
                  "list");
    program.value("--root", root, "DIR",
                  "Results keep the places that their databases have below this directory. Without it, those "
                  "below each directory that is named, and those of --files-from below the present one.",
                  "/");
    program.value(
        "--shard", shard, "K/N",
        "Convert part K of N alone, 0 to N - 1. Which part a database belongs to its place says, so "
        "that N computers need to know nothing of each other.");
    program.value("--plan", partsToPlan, "N", "Print how even N parts are, and convert nothing.");
    program.value(
        "--report", conversion.report, "FILE",
        "Write a line of JSON for each database that is done. Another run with this file does what is "
        "missing or has changed. fltreport reads the files of all parts.",
        ".jsonl");
    program.noClobberOption(conversion.existing);
    program.flag("--stat", conversion.measures,
                 "Print a table: nodes, faces, triangles, textures, bytes and seconds.");
    program.flag("--progress", showsProgressAtOnce,
                 "Show on a terminal how far it is from the beginning, not only when it takes longer.");
    loading.add(program, LoaderOptions::Programs::all);
    program.inputs(inputs, false);
}

/// Whether results go to the places that their databases have below a directory.
bool ConversionCommand::hasPlaces() const
{
    return !filesFrom.empty() || !root.empty() || !shard.empty();
}

bool ConversionCommand::goesToDirectory() const
{
    if (hasPlaces())
        return output != "-";
    bool const namesDirectory =
        !output.empty() && (output.back() == '/' || DatabaseFiles::isDirectory(output));
    return output != "-" &&
           (namesDirectory || inputs.size() > 1 || DatabaseFiles::isDirectory(inputs.front()));
}

bool ConversionCommand::endsAsResult(std::string const& path) const
{
    std::string const ending = FileEnding::of(path);
    return std::any_of(forms.begin(), forms.end(),
                       [&](ConversionForm const& form) { return form.ending == ending; });
}

/// What is missing where several files are written: "add -o FILE.iv or -o DIR/".
std::string ConversionCommand::fileOrDirectory() const
{
    return "add -o FILE" + form().ending + " or -o DIR/";
}

/// Takes over the form of the results, from the ending of the output or --to.
void ConversionCommand::chooseForm()
{
    bool const isNamed = output != "-" && !goesToDirectory();
    if (isNamed) {
        std::vector<std::string_view> endings;
        for (ConversionForm const& form : forms)
            endings.push_back(form.ending);
        OutputFile::checkEnding(output, endings);
    }
    std::string const named = isNamed ? FileEnding::of(output) : "";
    if (!format.empty() && isNamed && endsAsResult(output) && named != "." + format)
        throw UsageError("the name " + output + " doesn't go with --to " + format);
    chosenForm = formNamed(forms, format.empty() ? named : "." + format);
    conversion.beside = form().beside;
    conversion.hasPictures = form().hasPictures;
    if (OutputFile::isStream(output) && form().needsPlace)
        throw UsageError("--to " + wordOf(form()) + " can't go into a pipe: " + fileOrDirectory());
}

/// Refuses places where the results can't go.
void ConversionCommand::checkOutput() const
{
    auto const isOutput = [this](std::string const& input) { // "flt2iv a.flt out.iv"
        return endsAsResult(input) && !FltLoader::canLoad(input);
    };
    auto const misplaced = std::find_if(inputs.begin(), inputs.end(), isOutput);
    if (output == "-" && misplaced != inputs.end())
        throw UsageError(*misplaced + " is no database. To write it, give -o " + *misplaced);
    if (OutputFile::isStream(output) && inputs.size() > 1)
        throw UsageError("several databases need a directory to go to: add -o DIR/");
    std::error_code ignored;
    bool const isThere = fs::exists(output, ignored);
    bool const isFile = isThere ? !DatabaseFiles::isDirectory(output) : endsAsResult(output);
    if (goesToDirectory() && isFile)
        throw UsageError(output + (isThere ? " is a file" : " names a file") +
                         ", and several databases need a directory to go to: give -o DIR/");
    if (conversion.onlyIfNewer && conversion.existing == OutputFile::Existing::keep)
        throw UsageError("--if-newer and --no-clobber contradict each other");
    if (conversion.report.empty())
        return;
    if (OutputFile::isStream(output))
        throw UsageError("--report needs results with a place: " + fileOrDirectory());
    if (conversion.onlyIfNewer)
        throw UsageError("--report knows by itself what is up to date: leave --if-newer out");
    if (conversion.existing == OutputFile::Existing::keep)
        throw UsageError("--report and --no-clobber contradict each other");
}

/// Refuses options that don't go together.
void ConversionCommand::checkLoader(FltLoader const& loader) const
{
    bool const namesReferences = loader.references == FltLoader::References::asFile;
    bool const keepsUnits = loader.units == FltLoader::Units::stored;
    bool const keepsOrigin = loader.origin == FltLoader::Origin::stored;
    if (OutputFile::isStream(output) && namesReferences)
        throw UsageError("--xref file writes several files: " + fileOrDirectory());
    if (OutputFile::isStream(output) && conversion.onlyIfNewer)
        throw UsageError("--if-newer needs a file to compare with: " + fileOrDirectory());
    if (namesReferences && keepsUnits)
        throw UsageError("--xref file needs --units metres: files that include each other share their unit");
    if (namesReferences && !keepsOrigin)
        throw UsageError("--xref file needs --origin stored: files that include each other share their zero");
    bool const isForComplete = namesReferences || keepsUnits || !keepsOrigin ||
                               loader.levelsOfDetail != FltLoader::LevelsOfDetail::all ||
                               loader.time != FltLoader::TimeOfDay::day || loader.merge ||
                               loader.names != FltLoader::Names::all;
    if (loader.exact && isForComplete)
        throw UsageError("--exact has no choice of --xref file, --units stored, --origin centre, --lod, "
                         "--time, --merge and --names");
    bool const isMany = goesToDirectory() || namesReferences;
    if (isMany && loader.log && !loader.log->empty())
        throw UsageError("--log=PATH is for a single database: give --log without a name");
}

/// Makes sure that there are inputs, and that places have a directory to count from.
void ConversionCommand::checkPlaces() const
{
    if (inputs.empty() && filesFrom.empty())
        throw UsageError("FILE is required");
    if (!root.empty() && !DatabaseFiles::isDirectory(root))
        throw UsageError("--root " + root + ": there is no such directory");
    if (hasPlaces() && output == "-" && partsToPlan.empty())
        throw UsageError("--files-from, --root and --shard need a directory to go to: add -o DIR/");
}

void ConversionCommand::check()
{
    FltLoader const loader = loading.makeLoader();
    checkPlaces();
    if (!partsToPlan.empty())
        return;
    checkOutput();
    checkLoader(loader);
    chooseForm();
    conversion.jobs = jobsOf(jobs);
    conversion.references = loader.references;
    conversion.optionsGiven = program.optionsGiven(withoutEffect);
    if (program.isQuiet())
        conversion.progress = ProgressLine::Start::never;
    else if (showsProgressAtOnce)
        conversion.progress = ProgressLine::Start::atOnce;
}

/// Converts one database in this process.
ExitCode ConversionCommand::convertOne(DatabaseConverter const& converter) const
{
    std::string const& input = inputs.front();
    if (output == "-" && DatabaseFiles::isDirectory(input))
        throw ToolError(input + ": this is a directory. Say where its databases shall go: -o DIR/");
    if (!OutputFile::isStream(output)) {
        ConversionPlan plan(form().ending);
        plan.addFile(input, output);
        ConversionRun(program, loading, conversion, converter).checkOutputs(plan);
    }
    ConversionStatistics statistics;
    {
        ProgressLine line(conversion.progress);
        statistics =
            converter.convert({input, output, {}}, shownOn(line), [&line] { line.clear(); }).statistics;
    }
    if (conversion.measures)
        std::fprintf(OutputFile::isStream(output) ? stderr : stdout, "%s\n%s\n",
                     ConversionStatistics::tableHead().c_str(), statistics.tableLine(input).c_str());
    return ExitCode::success;
}

/// The plan of a part of what the command line names.
ConversionPlan ConversionCommand::planned(TreePart part) const
{
    ConversionPlan plan(form().ending, part);
    std::string const base = root.empty() ? "." : root;
    for (std::string const& input : inputs)
        if (root.empty())
            plan.addInput(input, output);
        else
            plan.addBelow(root, input, output);
    for (std::string const& name : filesFrom.empty() ? std::vector<std::string>{} : FileList::read(filesFrom))
        plan.addBelow(base, root.empty() ? name : (fs::path(root) / name).string(), output);
    return plan;
}

ExitCode ConversionCommand::showParts() const
{
    std::uint64_t const parts = TreePart::countIn("--plan", partsToPlan);
    ConversionPlan const plan = planned({});
    std::printf("%s", PartSizes(plan.entries(), parts).text().c_str());
    return program.reported(plan.problems());
}

ExitCode ConversionCommand::convertMany(DatabaseConverter const& converter)
{
    ConversionPlan plan(form().ending);
    if (goesToDirectory())
        plan = planned(shard.empty() ? TreePart{} : TreePart::named(shard));
    else
        plan.addFile(inputs.front(), output);
    conversion.summarises = inputs.size() != 1 || hasPlaces() || DatabaseFiles::isDirectory(inputs.front());
    return ConversionRun(program, loading, conversion, converter).run(plan);
}

ExitCode ConversionCommand::run(DatabaseConverter const& converter)
{
    if (!partsToPlan.empty())
        return showParts();
    bool const isMany = goesToDirectory() || conversion.onlyIfNewer || !conversion.report.empty() ||
                        conversion.references == FltLoader::References::asFile;
    return isMany ? convertMany(converter) : convertOne(converter);
}
