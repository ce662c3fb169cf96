#pragma once

#include "convert/ReportReader.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

/// All of a report, for tests that look at what a run has written.
struct WrittenReport {
    std::optional<ReportRun> run;
    std::vector<ReportLine> lines; ///< The last one of each database, in the order of the first ones.
    std::size_t torn = 0;

    explicit WrittenReport(std::string_view text)
    {
        ReportReader reader([this](std::size_t database, ReportLine& line, ReportReader::Place const&) {
            if (database == lines.size())
                lines.emplace_back();
            lines[database] = std::move(line);
        });
        reader.add(text);
        reader.end();
        run = reader.run();
        torn = reader.torn();
    }
};
