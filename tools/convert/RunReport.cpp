#include "convert/RunReport.h"

#include "messages/FltText.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

namespace
{

namespace fs = std::filesystem;

fs::path baseOf(std::string const& directory)
{
    return directory.empty() ? "." : directory;
}

/// Where a file of a result is below the directory of all results.
std::string placeOf(std::string const& output, std::string const& directory)
{
    return FltText::utf8(fs::path(output).lexically_proximate(baseOf(directory)).generic_string());
}

std::vector<std::string> placesOf(std::vector<std::string> names, std::string const& directory)
{
    for (std::string& name : names)
        name = placeOf(name, directory);
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

RunReport::RunReport(std::string const& path, ReportRun const& run, bool hasFilesBeside)
    : run(run), hasFilesBeside(hasFilesBeside), file(path, run),
      isOfThisKind(file.earlierRun() && file.earlierRun()->isLike(run))
{
}

std::string RunReport::remark() const
{
    std::optional<ReportRun> const& before = file.earlierRun();
    if (!before || isOfThisKind)
        return "";
    if (before->part.count != run.part.count || before->part.number != run.part.number)
        return "the report is of part " + before->part.name() + ", and this is part " + run.part.name() +
               ": everything is made anew";
    return "the report is of a run with other options, or of another version: everything is made anew";
}

/// Of a file as it is: looked at once, however many results it belongs to.
std::optional<FileStamp> const& RunReport::stampOf(std::string const& path)
{
    auto const [stamp, isNew] = stamps.try_emplace(path);
    if (isNew)
        stamp->second = FileStamp::of(path);
    return stamp->second;
}

/// Whether all files of a result are there, in their sizes.
bool RunReport::isThere(ReportLine const& line, ConversionPlan::Entry const& entry)
{
    auto const hasSize = [this](std::string const& path, std::uint64_t bytes) {
        std::optional<FileStamp> const& stamp = stampOf(path);
        return stamp && stamp->size == bytes;
    };
    if (line.output != placeOf(entry.output, entry.outputDirectory) ||
        !hasSize(entry.output, line.bytesWritten))
        return false;
    if (!line.facts.beside)
        return !hasFilesBeside;
    fs::path const base = baseOf(entry.outputDirectory);
    return std::all_of(
        line.facts.beside->begin(), line.facts.beside->end(),
        [&](ConversionFacts::File const& one) { return hasSize((base / one.path).string(), one.bytes); });
}

bool RunReport::isUpToDate(ConversionPlan::Entry const& entry, std::vector<std::string> const& names)
{
    auto const [answer, isNew] = known.try_emplace(entry.output, false);
    if (!isNew)
        return answer->second;
    std::optional<ReportLine> const line =
        isOfThisKind ? file.earlierLine(FltText::utf8(entry.place)) : std::nullopt;
    if (!line)
        return false;
    bool const isDone = line->exitCode == 0 && line->facts.isSettled && isThere(*line, entry) &&
                        line->names == placesOf(names, entry.outputDirectory);
    answer->second =
        isDone && !line->facts.needs.empty() &&
        std::all_of(line->facts.needs.begin(), line->facts.needs.end(),
                    [this](NeededFiles::File const& needed) { return stampOf(needed.path) == needed.stamp; });
    if (answer->second)
        takenOver.push_back(line->input);
    return answer->second;
}

void RunReport::add(ConversionPlan::Entry const& entry, ConversionStatistics const& statistics,
                    std::vector<std::string> const& names, std::string const& facts)
{
    ReportLine line;
    line.input = entry.place;
    line.output = placeOf(entry.output, entry.outputDirectory);
    line.bytesRead = entry.bytes;
    line.bytesWritten = statistics.bytesOut;
    line.names = placesOf(names, entry.outputDirectory);
    line.facts = ConversionFacts::from(nlohmann::ordered_json::parse(facts));
    if (line.facts.beside)
        for (ConversionFacts::File& one : *line.facts.beside)
            one.path = placeOf(one.path, entry.outputDirectory);
    file.add(line);
}

void RunReport::addFailure(ConversionPlan::Entry const& entry, std::string const& problem)
{
    ReportLine line;
    line.input = entry.place;
    line.output = placeOf(entry.output, entry.outputDirectory);
    line.bytesRead = entry.bytes;
    line.exitCode = 1;
    line.problem = problem;
    file.add(line);
}

std::string RunReport::textOf(ConversionFacts const& facts)
{
    using Json = nlohmann::ordered_json;
    Json json;
    facts.addTo(json);
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}
