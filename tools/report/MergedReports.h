#pragma once

#include "convert/ReportLine.h"
#include "convert/ReportRun.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

/// What all parts of a run have done, from their reports.
class MergedReports
{
public:
    /// One report.
    struct Part {
        std::string file;
        ReportRun run;
        std::uint64_t converted = 0;
        std::uint64_t failed = 0;
        double seconds = 0; ///< Of all its conversions.

        /// Databases of which nothing is known: the run has ended before they were done.
        std::uint64_t absent() const
        {
            std::uint64_t const known = converted + failed;
            return run.databases > known ? run.databases - known : 0;
        }
    };

    /// Sums of all parts.
    struct Totals {
        std::uint64_t converted = 0, failed = 0, absent = 0;
        std::uint64_t bytesRead = 0, bytesWritten = 0;
        double seconds = 0;                         ///< Of all conversions, one after the other.
        std::uint64_t memory = 0;                   ///< The most bytes that a conversion held.
        std::array<std::uint64_t, 3> messages = {}; ///< Remarks, warnings and errors.
        std::uint64_t triangles = 0;
    };

    /// A texture that wasn't found.
    struct Missing {
        std::string name; ///< As stored.
        std::uint64_t databases = 0;
    };

    using Lines = std::vector<ReportLine const*>;

    /// Adds a report. Of a database that stands in several of them the last line counts.
    /// @throw ToolError if it can't be read, or is none
    void add(std::string const& file);

    std::vector<Part> const& parts() const { return allParts; }
    Totals totals() const;

    /// Parts of the run whose reports aren't there: the first and the last number of each gap.
    std::vector<std::pair<std::uint64_t, std::uint64_t>> gaps() const;

    /// Whether every database of every part was converted.
    bool isWhole() const;

    /// What doesn't fit together, a sentence each.
    std::vector<std::string> remarks() const;

    /// All databases, by their names.
    Lines databases() const;

    /// Those that couldn't be converted, by their names.
    Lines failed() const;

    /// Those whose conversion took longest, the slowest first. @param most how many at most
    Lines slowest(std::size_t most) const;

    /// Those with the largest results, the largest first. @param most how many at most
    Lines largest(std::size_t most) const;

    /// By how many databases they darken, the most first.
    std::vector<Missing> missingTextures() const;

private:
    Lines ranked(std::size_t most, double (*number)(ReportLine const& line)) const;

    std::vector<Part> allParts;
    std::deque<ReportLine> lines;
    std::unordered_map<std::string, std::size_t> positions; ///< In the lines, by the input.
    std::uint64_t repeated = 0;                             ///< Databases that stand in several reports.
    std::uint64_t torn = 0;
};
