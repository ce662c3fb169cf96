#include "report/MergedReports.h"

#include "convert/ReportReader.h"

#include "support/Numbers.h"

#include <algorithm>
#include <map>
#include <set>

namespace
{

bool isOfOneRun(ReportRun const& one, ReportRun const& other)
{
    return one.program == other.program && one.version == other.version && one.options == other.options &&
           one.part.count == other.part.count;
}

/// Keeps what a report is asked for: the lists of files are the longest of it.
void keep(ReportLine& line, ReportLine& kept)
{
    kept = std::move(line);
    kept.names = {};
    kept.facts.needs = {};
    kept.facts.beside.reset();
    if (kept.facts.tile) {
        kept.facts.tile->coarser = {};
        kept.facts.tile->references = {};
    }
}

} // namespace

void MergedReports::add(std::string const& file)
{
    struct Result {
        bool isConverted = false;
        double seconds = 0;
    };
    std::vector<Result> results;
    ReportReader const reader =
        ReportReader::read(file, [&](std::size_t database, ReportLine& line, ReportReader::Place const&) {
            auto const [known, isNew] = positions.try_emplace(line.input, lines.size());
            if (isNew)
                lines.emplace_back();
            else if (database == results.size())
                ++repeated;
            results.resize(std::max(results.size(), database + 1));
            results[database] = {line.exitCode == 0, line.facts.seconds};
            keep(line, lines[known->second]);
        });
    Part part = {file, *reader.run()};
    torn += reader.torn();
    for (Result const& result : results) {
        ++(result.isConverted ? part.converted : part.failed);
        part.seconds += result.seconds;
    }
    allParts.push_back(std::move(part));
}

MergedReports::Totals MergedReports::totals() const
{
    Totals totals;
    for (Part const& part : allParts)
        totals.absent += part.absent();
    for (ReportLine const& line : lines) {
        ++(line.exitCode == 0 ? totals.converted : totals.failed);
        totals.bytesRead += line.bytesRead;
        totals.bytesWritten += line.bytesWritten;
        totals.seconds += line.facts.seconds;
        totals.memory = std::max(totals.memory, line.facts.memory);
        totals.triangles += line.facts.triangles;
        for (std::size_t level = 0; level < totals.messages.size(); ++level)
            totals.messages[level] += line.facts.messages[level];
    }
    return totals;
}

std::vector<std::pair<std::uint64_t, std::uint64_t>> MergedReports::gaps() const
{
    std::vector<std::pair<std::uint64_t, std::uint64_t>> gaps;
    std::set<std::uint64_t> numbers;
    std::uint64_t count = 0;
    for (Part const& part : allParts) {
        numbers.insert(part.run.part.number);
        count = std::max(count, part.run.part.count);
    }
    std::uint64_t next = 0;
    for (std::uint64_t const number : numbers) {
        if (number > next)
            gaps.emplace_back(next, number - 1);
        next = number + 1;
    }
    if (next < count)
        gaps.emplace_back(next, count - 1);
    return gaps;
}

bool MergedReports::isWhole() const
{
    Totals const sums = totals();
    return sums.failed == 0 && sums.absent == 0 && gaps().empty();
}

std::vector<std::string> MergedReports::remarks() const
{
    std::vector<std::string> remarks;
    for (Part const& part : allParts)
        if (!isOfOneRun(part.run, allParts.front().run))
            remarks.push_back(part.file + " is of another run than " + allParts.front().file +
                              ": of another program or version, or with other options or parts.");
    if (repeated != 0)
        remarks.push_back(Numbers::counted(repeated, "database stands", "databases stand") +
                          " in several reports: the last line counts.");
    if (torn != 0)
        remarks.push_back(Numbers::counted(torn, "line isn't", "lines aren't") +
                          " whole, and counted as absent.");
    return remarks;
}

MergedReports::Lines MergedReports::databases() const
{
    Lines all;
    all.reserve(lines.size());
    for (ReportLine const& line : lines)
        all.push_back(&line);
    std::sort(all.begin(), all.end(),
              [](ReportLine const* one, ReportLine const* other) { return one->input < other->input; });
    return all;
}

MergedReports::Lines MergedReports::failed() const
{
    Lines found = databases();
    found.erase(std::remove_if(found.begin(), found.end(),
                               [](ReportLine const* line) { return line->exitCode == 0; }),
                found.end());
    return found;
}

/// The databases of which a number is largest; those of which it is 0 are left out.
MergedReports::Lines MergedReports::ranked(std::size_t most, double (*number)(ReportLine const& line)) const
{
    Lines found = databases();
    found.erase(std::remove_if(found.begin(), found.end(),
                               [number](ReportLine const* line) { return !(number(*line) > 0); }),
                found.end());
    auto const end = found.begin() + static_cast<std::ptrdiff_t>(std::min(most, found.size()));
    std::partial_sort(found.begin(), end, found.end(),
                      [number](ReportLine const* one, ReportLine const* other) {
                          double const first = number(*one), second = number(*other);
                          return first != second ? first > second : one->input < other->input;
                      });
    found.erase(end, found.end());
    return found;
}

MergedReports::Lines MergedReports::slowest(std::size_t most) const
{
    return ranked(most, [](ReportLine const& line) { return line.facts.seconds; });
}

MergedReports::Lines MergedReports::largest(std::size_t most) const
{
    return ranked(most, [](ReportLine const& line) { return static_cast<double>(line.bytesWritten); });
}

std::vector<MergedReports::Missing> MergedReports::missingTextures() const
{
    std::map<std::string, std::uint64_t> counts;
    for (ReportLine const& line : lines)
        for (std::string const& name : line.facts.missingTextures)
            ++counts[name];
    std::vector<Missing> missing;
    missing.reserve(counts.size());
    for (auto const& [name, count] : counts)
        missing.push_back({name, count});
    std::stable_sort(missing.begin(), missing.end(), [](Missing const& one, Missing const& other) {
        return one.databases > other.databases;
    });
    return missing;
}
