#pragma once

#include "convert/TreePart.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

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
