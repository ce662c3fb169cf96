#pragma once

#include "convert/ReportLine.h"
#include "convert/TreePart.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The first line of a report: what the run was.
struct ReportRun {
    std::string program;
    std::string version;
    std::string options; ///< Those that have an effect on results.
    TreePart part;
    std::uint64_t databases = 0; ///< Of the part, whether they are done or not.

    /// Whether results are those of another run.
    bool isLike(ReportRun const& other) const
    {
        return program == other.program && version == other.version && options == other.options &&
               part.number == other.part.number && part.count == other.part.count;
    }

    std::string text() const;
    static std::optional<ReportRun> from(std::string_view text);
};

/// What a run by --report has written: its first line, and one for each database that is done.
struct Report {
    std::optional<ReportRun> run;  ///< The last one; nothing if this is no report.
    std::vector<ReportLine> lines; ///< The last one of each database, in the order of the first ones.
    std::size_t torn = 0;          ///< Lines that aren't whole, which count as absent.

    static Report from(std::string_view text);
};
