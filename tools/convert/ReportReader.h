#pragma once

#include "convert/ReportLine.h"
#include "convert/ReportRun.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

/// Reads what a run by --report has written: its first line, and one for each database that is done. It holds
/// a line at a time, since a report may tell of a million databases.
class ReportReader
{
public:
    /// Where a line stands in the file.
    struct Place {
        std::uint64_t offset = 0;
        std::size_t size = 0; ///< With its end.
    };

    /// Takes a line that is whole.
    /// @param database its number in the report, from 0 on: of one that has several lines the last one counts
    using Take = std::function<void(std::size_t database, ReportLine& line, Place const& place)>;

    explicit ReportReader(Take take) : take(std::move(take)) {}

    /// Reads a whole file.
    /// @throw ToolError if it can't be read, or is no report
    static ReportReader read(std::string const& file, Take take);

    /// Takes the next bytes of a report.
    void add(std::string_view bytes);

    /// Ends: what follows the last end of a line isn't whole.
    void end();

    /// The number of a database; nothing if the report doesn't tell of it.
    std::optional<std::size_t> numberOf(std::string const& input) const;

    /// What the last run was; nothing if this is no report.
    std::optional<ReportRun> const& run() const { return lastRun; }

    /// Lines that aren't whole, which count as absent.
    std::size_t torn() const { return tornLines; }

private:
    void readLine(std::string_view line, bool hasEnd);

    Take take;
    std::string begun; ///< A line whose end hasn't come.
    std::uint64_t offset = 0;
    std::unordered_map<std::string, std::size_t> numbers; ///< Of databases.
    std::optional<ReportRun> lastRun;
    std::size_t tornLines = 0;
};
