#include "convert/RunReport.h"

#include "messages/FltText.h"

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

namespace
{

/// Where a result is below the directory of all results.
std::string placeOf(std::string const& output, std::string const& directory)
{
    std::filesystem::path const base = directory.empty() ? "." : directory;
    return FltText::utf8(std::filesystem::path(output).lexically_proximate(base).generic_string());
}

std::vector<std::string> placesOf(std::vector<std::string> names, std::string const& directory)
{
    for (std::string& name : names)
        name = placeOf(name, directory);
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

RunReport::RunReport(std::string const& path, ReportRun const& run) : run(run), file(path, run)
{
    Report const& earlier = file.earlier();
    if (!earlier.run || !earlier.run->isLike(run))
        return;
    for (std::size_t i = 0; i < earlier.lines.size(); ++i)
        lines.emplace(earlier.lines[i].input, i);
}

std::string RunReport::remark() const
{
    std::optional<ReportRun> const& before = file.earlier().run;
    if (!before || before->isLike(run))
        return "";
    if (before->part.count != run.part.count || before->part.number != run.part.number)
        return "the report is of part " + before->part.name() + ", and this is part " + run.part.name() +
               ": everything is made anew";
    return "the report is of a run with other options, or of another version: everything is made anew";
}

bool RunReport::isAsItWas(NeededFiles::File const& needed)
{
    auto const [stamp, isNew] = stamps.try_emplace(needed.path);
    if (isNew)
        stamp->second = FileStamp::of(needed.path);
    return stamp->second == needed.stamp;
}

bool RunReport::isUpToDate(ConversionPlan::Entry const& entry, std::vector<std::string> const& names)
{
    auto const [answer, isNew] = known.try_emplace(entry.output, false);
    if (!isNew)
        return answer->second;
    auto const found = lines.find(FltText::utf8(entry.place));
    if (found == lines.end())
        return false;
    ReportLine const& line = file.earlier().lines[found->second];
    std::optional<FileStamp> const output = FileStamp::of(entry.output);
    bool const isDone = line.exitCode == 0 && line.facts.isSettled && output &&
                        output->size == line.bytesWritten &&
                        line.output == placeOf(entry.output, entry.outputDirectory) &&
                        line.names == placesOf(names, entry.outputDirectory);
    answer->second = isDone && !line.facts.needs.empty() &&
                     std::all_of(line.facts.needs.begin(), line.facts.needs.end(),
                                 [this](NeededFiles::File const& needed) { return isAsItWas(needed); });
    if (answer->second)
        takenOver.push_back(line);
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
