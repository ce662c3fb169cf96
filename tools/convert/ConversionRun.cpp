#include "convert/ConversionRun.h"

#include "support/Numbers.h"
#include "support/TextureFinder.h"
#include "support/ToolError.h"

#include "messages/FltText.h"
#include "toolkit/TemporaryName.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <new>
#include <numeric>
#include <optional>
#include <sys/stat.h>
#include <utility>

namespace
{

constexpr char scanning[] = "scan";
constexpr char searching[] = "search";
constexpr char converting[] = "convert";
constexpr char done[] = "done";
constexpr char failed[] = "failed";

/// For the loader: tells how many bytes of a database are done, ten times a second.
FltLoader::Progress teller(std::string const& input, WorkerProcess::Tell const& tell)
{
    using Clock = std::chrono::steady_clock;
    return [input, tell, next = Clock::now()](std::string const& file, std::uint64_t bytesDone,
                                              std::uint64_t) mutable {
        bool const isInput = file == input || file == "./" + input;
        if (!isInput || Clock::now() < next)
            return true;
        next = Clock::now() + std::chrono::milliseconds(100);
        tell(std::to_string(bytesDone));
        return true;
    };
}

void makeFolderOf(std::string const& file)
{
    std::filesystem::path const folder = std::filesystem::path(file).parent_path();
    std::error_code problem;
    if (!folder.empty())
        std::filesystem::create_directories(folder, problem);
    if (problem)
        throw ToolError(folder.string() + ": cannot make this directory: " + problem.message() +
                        ". Check the permissions and the space on the disk.");
}

/// Looks for textures.
/// @param request the directory, and their names as stored
/// @return the number of a name and a file, for each file that a load would try
std::vector<std::string> search(std::vector<std::string> const& request,
                                std::vector<std::string> const& texturePath)
{
    std::string const database = (std::filesystem::path(request.at(1)) / "database.flt").string();
    TextureFinder const find(database, texturePath);
    std::vector<std::string> found;
    for (std::size_t i = 2; i < request.size(); ++i)
        for (std::string& file : find.candidates(request[i], database)) {
            found.push_back(std::to_string(i - 2));
            found.push_back(std::move(file));
        }
    return found;
}

bool isFile(std::string const& path)
{
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

/// A sentence that begins with the name of the database.
std::string about(std::string const& input, std::string const& text)
{
    return text.compare(0, input.size(), input) == 0 ? text : input + ": " + text;
}

} // namespace

ConversionRun::ConversionRun(Program const& program, LoaderOptions const& loaderOptions,
                             ConversionOptions const& options, DatabaseConverter const& converter)
    : program(program), loaderOptions(loaderOptions), options(options), converter(converter),
      pool(options.jobs,
           [this](Fields const& request, WorkerProcess::Tell const& tell) { return work(request, tell); }),
      progress(options.progress)
{
}

bool ConversionRun::namesReferences() const
{
    return options.references == FltLoader::References::asFile;
}

bool ConversionRun::opensReferences() const
{
    return options.references != FltLoader::References::skip;
}

ConversionRun::Fields ConversionRun::work(Fields const& request, WorkerProcess::Tell const& tell) const
{
    if (request.front() == scanning)
        return DatabaseScan::of(request.at(1), loaderOptions.makeLoader().texturePath, options.readsTextures)
            .fields();
    if (request.front() == searching)
        return search(request, loaderOptions.makeLoader().texturePath);
    try {
        return convert(request, tell);
    } catch (std::bad_alloc const&) {
        return {failed, "out of memory. The file is damaged, or too large for this machine."};
    } catch (std::exception const& problem) {
        return {failed, problem.what()};
    }
}

/// @param request the input, the output, and databases that may be named, each with its converted file
ConversionRun::Fields ConversionRun::convert(Fields const& request, WorkerProcess::Tell const& tell) const
{
    Conversion conversion{request.at(1), request.at(2), {}};
    for (std::size_t i = 3; i + 1 < request.size(); i += 2)
        conversion.referenceOutputs[request[i]] = request[i + 1];
    auto const makeFolder = [&conversion] { makeFolderOf(conversion.output); };
    ConversionResult const result = converter.convert(conversion, teller(conversion.input, tell), makeFolder);
    Fields reply = result.statistics.fields();
    reply.insert(reply.begin(), {done, RunReport::textOf(result.facts)});
    return reply;
}

/// Looks into databases, and notes in the graph what they need. One at which a worker dies stays unknown.
void ConversionRun::scanSome(std::vector<DatabaseScan::Reference> const& databases)
{
    std::size_t ended = 0;
    WorkerPool::Watcher watcher;
    watcher.end = [&](std::size_t number, WorkerPool::Result const& result) {
        progress.show("looked into " + std::to_string(++ended) + " of " + std::to_string(databases.size()) +
                      " databases");
        if (result.death.empty())
            graph.add(databases[number].identity, DatabaseScan::fromFields(result.reply));
    };
    watcher.note = [](std::size_t, std::string const&) {};
    pool.run(
        databases.size(),
        [&](std::size_t number) {
            return Fields{scanning, databases[number].path};
        },
        watcher);
}

/// Names the databases to which the planned ones refer, and which aren't converted.
void ConversionRun::warnOfOutside(ConversionPlan const& plan)
{
    struct Outside {
        std::string path;
        std::string first; ///< The first database that refers to it.
        std::uint64_t count = 0;
    };
    std::map<std::string, Outside> found;
    for (ConversionPlan::Entry const& entry : plan.entries())
        for (DatabaseScan::Reference const& reference : graph.references(entry.identity))
            if (!plan.outputOf(reference.identity)) {
                Outside& outside =
                    found.try_emplace(reference.identity, Outside{reference.path, entry.input}).first->second;
                ++outside.count;
            }
    progress.clear();
    for (auto const& [identity, outside] : found)
        program.warn(outside.path +
                     ": isn't among the databases of this run, so it isn't converted. It is needed by " +
                     Numbers::counted(outside.count, "database", "databases") + ", first by " +
                     outside.first + ". Name it too, with a --root above all");
}

/// Plans the databases to which the planned ones refer, and chooses the references by which a reader comes to
/// an end.
void ConversionRun::nameReferences(ConversionPlan& plan)
{
    if (plan.isBound())
        warnOfOutside(plan);
    for (std::size_t i = 0; i < plan.entries().size() && !plan.isBound(); ++i) {
        std::string const identity = plan.entries()[i].identity;
        for (DatabaseScan::Reference const& reference : graph.references(identity))
            plan.addReference(reference.path, reference.identity, i);
    }
    plan.check();
    if (plan.isTree()) {
        graph.chooseByNames();
        return;
    }
    std::vector<std::string> roots;
    for (ConversionPlan::Entry const& entry : plan.entries())
        roots.push_back(entry.identity);
    graph.choose(roots);
}

/// Finds out what the databases need, and what that needs, level by level.
void ConversionRun::scan(ConversionPlan const& plan)
{
    std::vector<DatabaseScan::Reference> level;
    for (ConversionPlan::Entry const& entry : plan.entries())
        if (scanned.try_emplace(entry.identity, entry.input).second)
            level.push_back({entry.input, entry.identity, 1});
    while (!level.empty()) {
        scanSome(level);
        std::vector<DatabaseScan::Reference> next;
        for (DatabaseScan::Reference const& database : level)
            for (DatabaseScan::Reference const& reference : graph.references(database.identity))
                if (opensReferences() && scanned.try_emplace(reference.identity, reference.path).second)
                    next.push_back(reference);
        level = std::move(next);
    }
}

/// Looks for the files that no output may replace, once all databases are scanned.
void ConversionRun::findReferredFiles(ConversionPlan const& plan)
{
    std::vector<DatabaseScan::Reference> roots;
    for (ConversionPlan::Entry const& entry : plan.entries()) {
        roots.push_back({entry.input, entry.identity, 1});
        referred.add(entry.input, "the database " + entry.input);
        if (std::string const log = loaderOptions.logOf(entry.input); !log.empty())
            referred.add(log, "the log of " + entry.input);
    }
    for (auto const& [database, path] : scanned)
        for (DatabaseScan::Reference const& reference : graph.references(database))
            referred.add(reference.path, "a file that " + path + " refers to");

    struct Search {
        Fields request;
        std::vector<std::string> databases; // one for each name in the request
    };
    std::vector<Search> searches;
    for (auto const& [directory, names] : graph.textureSearches(roots)) {
        searches.push_back({{searching, directory}, {}});
        for (auto const& [name, database] : names) {
            searches.back().request.push_back(name);
            searches.back().databases.push_back(scanned[database]);
        }
    }
    WorkerPool::Watcher watcher;
    watcher.end = [&](std::size_t number, WorkerPool::Result const& result) {
        for (std::size_t i = 0; i + 1 < result.reply.size(); i += 2)
            referred.add(result.reply[i + 1],
                         "a texture of " + searches[number].databases.at(std::stoul(result.reply[i])));
    };
    watcher.note = [](std::size_t, std::string const&) {};
    pool.run(
        searches.size(), [&](std::size_t number) { return searches[number].request; }, watcher);
}

/// The result of an entry, and the files that may belong to it, but for pictures.
std::vector<std::string> ConversionRun::filesOf(ConversionPlan::Entry const& entry) const
{
    std::vector<std::string> files = {entry.output};
    for (std::string const& ending : options.beside)
        files.push_back(std::filesystem::path(entry.output).replace_extension(ending).string());
    return files;
}

/// Why an entry can't be converted; empty if it can.
std::string ConversionRun::problemOf(ConversionPlan::Entry const& entry) const
{
    for (std::string const& file : filesOf(entry)) {
        if (std::string problem = keepsResults() ? OutputFile::problemOfReplacing(file) : "";
            !problem.empty())
            return problem;
        if (std::string const* const reason = referred.reasonToKeep(file); reason != nullptr)
            return file + ": the output would replace " + *reason + ". Choose another place for it with -o.";
    }
    return "";
}

bool ConversionRun::keepsResults() const
{
    return options.existing == OutputFile::Existing::keep;
}

/// Whether an output takes the place of a file, which might be one that is needed.
bool ConversionRun::replacesFiles(ConversionPlan const& plan) const
{
    auto const replaces = [this](ConversionPlan::Entry const& entry) {
        std::vector<std::string> const files = filesOf(entry);
        return std::any_of(files.begin(), files.end(), isFile);
    };
    return !keepsResults() && std::any_of(plan.entries().begin(), plan.entries().end(), replaces);
}

void ConversionRun::checkOutputs(ConversionPlan const& plan)
{
    if (replacesFiles(plan)) {
        scan(plan);
        findReferredFiles(plan);
        progress.clear();
    }
    for (ConversionPlan::Entry const& entry : plan.entries())
        if (std::string const problem = problemOf(entry); !problem.empty())
            throw ToolError(problem, keepsResults() ? ExitCode::failed : ExitCode::wrongUsage);
}

/// The results of others that one names.
std::vector<std::string> ConversionRun::namesIn(ConversionPlan const& plan,
                                                ConversionPlan::Entry const& entry) const
{
    Fields const request = requestFor(plan, entry);
    std::vector<std::string> names;
    for (std::size_t i = 4; i < request.size(); i += 2)
        names.push_back(request[i]);
    return names;
}

/// Reads what earlier runs have reported.
void ConversionRun::startReport(ConversionPlan const& plan)
{
    report.emplace(options.report,
                   ReportRun{program.name(), Program::version(), options.optionsGiven, plan.treePart(),
                             plan.entries().size()},
                   options.hasPictures || !options.beside.empty() || !options.textureDirectory.empty());
    if (std::string const remark = report->remark(); !remark.empty())
        program.warn(remark);
}

/// Whether there is nothing to do, which is seen without a look into any database.
bool ConversionRun::isAllReported(ConversionPlan const& plan)
{
    return report && !namesReferences() &&
           std::all_of(plan.entries().begin(), plan.entries().end(),
                       [&](ConversionPlan::Entry const& entry) { return report->isUpToDate(entry, {}); });
}

bool ConversionRun::isUpToDate(ConversionPlan const& plan, ConversionPlan::Entry const& entry)
{
    if (report)
        return report->isUpToDate(entry, namesIn(plan, entry));
    struct stat output = {};
    return options.onlyIfNewer && ::stat(entry.output.c_str(), &output) == 0 && S_ISREG(output.st_mode) &&
           !graph.hasChangedSince(entry.identity, ReferenceGraph::timeOf(entry.output));
}

/// The numbers of the entries that are to be converted.
std::vector<std::size_t> ConversionRun::chooseWork(ConversionPlan const& plan)
{
    std::vector<std::size_t> chosen;
    std::vector<std::pair<std::size_t, std::string>> problems;
    for (std::size_t i = 0; i < plan.entries().size(); ++i) {
        ConversionPlan::Entry const& entry = plan.entries()[i];
        if (std::string const problem = problemOf(entry); !problem.empty()) {
            refused.insert(entry.output);
            problems.emplace_back(i, about(entry.input, problem));
        } else if (isUpToDate(plan, entry)) {
            ++upToDate;
        } else {
            chosen.push_back(i);
        }
    }
    if (report)
        report->begin();
    for (auto const& [number, problem] : problems)
        addFailure(plan.entries()[number], problem);
    return chosen;
}

ConversionRun::Fields ConversionRun::requestFor(ConversionPlan const& plan,
                                                ConversionPlan::Entry const& entry) const
{
    Fields request{converting, entry.input, entry.output};
    if (!namesReferences())
        return request;
    for (DatabaseScan::Reference const& reference : graph.references(entry.identity)) {
        if (!graph.isChosen(entry.identity, reference.identity))
            continue;
        std::optional<std::string> const output = plan.outputOf(reference.identity);
        if (!output || refused.count(*output) != 0)
            continue;
        request.push_back(reference.identity);
        request.push_back(*output);
    }
    return request;
}

void ConversionRun::addFailure(ConversionPlan::Entry const& entry, std::string const& failure)
{
    failures.push_back(failure);
    if (report)
        report->addFailure(entry, failure);
}

void ConversionRun::takeResult(ConversionPlan const& plan, ConversionPlan::Entry const& entry,
                               WorkerPool::Result const& result)
{
    progress.clear();
    std::fputs(FltText::printable(result.errors, true).c_str(), stderr);
    if (!result.death.empty()) {
        addFailure(entry, entry.input + ": its conversion ended by " + result.death +
                              ". Perhaps the memory doesn't suffice; fltcheck may find out more.");
    } else if (result.reply.front() == failed) {
        addFailure(entry, about(entry.input, result.reply.at(1)));
    } else {
        ++converted;
        ConversionStatistics const statistics =
            ConversionStatistics::fromFields({result.reply.begin() + 2, result.reply.end()});
        total += statistics;
        if (options.measures)
            std::printf("%s\n", statistics.tableLine(entry.input).c_str());
        if (report)
            report->add(entry, statistics, namesIn(plan, entry), result.reply.at(1));
    }
}

void ConversionRun::showProgress(std::size_t count, std::uint64_t bytes)
{
    std::uint64_t doneNow = bytesDone;
    for (auto const& [number, inWork] : bytesInWork)
        doneNow += inWork;
    doneNow = std::min(doneNow, bytes);
    std::string text = std::to_string(converted + failures.size()) + " of " + std::to_string(count) +
                       " databases, " + Numbers::bytes(doneNow) + " of " + Numbers::bytes(bytes);
    if (!failures.empty())
        text += ", " + std::to_string(failures.size()) + " failed";
    std::string const left =
        ProgressLine::timeLeft(progress.seconds() - conversionBegin,
                               bytes == 0 ? 0 : static_cast<double>(doneNow) / static_cast<double>(bytes));
    progress.show(left.empty() ? text : text + ", " + left);
}

void ConversionRun::convertAll(ConversionPlan const& plan, std::vector<std::size_t> const& chosen)
{
    std::vector<ConversionPlan::Entry> const& entries = plan.entries();
    std::uint64_t const bytes =
        std::accumulate(chosen.begin(), chosen.end(), std::uint64_t(0),
                        [&](std::uint64_t sum, std::size_t i) { return sum + entries[i].bytes; });
    WorkerPool::Watcher watcher;
    watcher.note = [&](std::size_t number, std::string const& note) {
        bytesInWork[number] = std::stoull(note);
        showProgress(chosen.size() + refused.size(), bytes);
    };
    watcher.end = [&](std::size_t number, WorkerPool::Result const& result) {
        bytesInWork.erase(number);
        bytesDone += entries[chosen[number]].bytes;
        takeResult(plan, entries[chosen[number]], result);
        showProgress(chosen.size() + refused.size(), bytes);
    };
    conversionBegin = progress.seconds();
    if (options.measures)
        std::printf("%s\n", ConversionStatistics::tableHead().c_str());
    pool.run(
        chosen.size(), [&](std::size_t number) { return requestFor(plan, entries[chosen[number]]); },
        watcher);
    progress.clear();
}

/// Says how it went: what went wrong on standard error, together with the count.
ExitCode ConversionRun::summary(ConversionPlan const& plan)
{
    if (report && !report->problem().empty())
        failures.push_back(report->problem());
    failures.insert(failures.end(), plan.problems().begin(), plan.problems().end());
    if (options.measures && converted > 1)
        std::printf("%s\n", total.tableLine("in all").c_str());
    std::fflush(stdout);
    std::sort(failures.begin(), failures.end());
    for (std::string const& failure : failures)
        program.error(options.summarises ? "not converted: " + failure : failure);
    std::string count =
        std::to_string(converted) + " of " + std::to_string(plan.entries().size()) + " databases converted";
    if (upToDate != 0)
        count += ", " + std::to_string(upToDate) + " up to date";
    bool const isSummaryWanted = options.summarises || plan.entries().size() > 1;
    if (isSummaryWanted && !failures.empty())
        program.error(count);
    else if (isSummaryWanted && !program.isQuiet())
        std::printf("%s\n", count.c_str());
    return failures.empty() ? ExitCode::success : ExitCode::failed;
}

/// Takes away what runs that were ended have left of the results.
void ConversionRun::tidyUp(ConversionPlan const& plan) const
{
    std::vector<std::string> targets;
    for (ConversionPlan::Entry const& entry : plan.entries()) {
        for (std::string& file : filesOf(entry))
            targets.push_back(std::move(file));
        std::filesystem::path const stem = std::filesystem::path(entry.output).replace_extension();
        TemporaryName::removeAbandonedIn(stem.string() + "_textures");
    }
    if (!options.report.empty())
        targets.push_back(options.report);
    TemporaryName::removeAbandoned(targets);
    if (!options.textureDirectory.empty())
        TemporaryName::removeAbandonedIn(options.textureDirectory);
}

ExitCode ConversionRun::run(ConversionPlan& plan)
{
    plan.check();
    tidyUp(plan);
    if (!options.report.empty())
        startReport(plan);
    bool const hasWork = !isAllReported(plan);
    if (hasWork && (options.onlyIfNewer || namesReferences() || replacesFiles(plan)))
        scan(plan);
    if (options.onlyIfNewer)
        graph.readTimes(opensReferences());
    if (namesReferences())
        nameReferences(plan);
    if (hasWork && replacesFiles(plan))
        findReferredFiles(plan);
    convertAll(plan, chooseWork(plan));
    return summary(plan);
}
