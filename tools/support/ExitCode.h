#pragma once

#include <array>
#include <string_view>

/// What a program's exit code says: the same in all of the project's programs.
enum class ExitCode {
    success = 0,
    failed = 1,     ///< An input can't be read, or an output can't be written.
    wrongUsage = 2, ///< The command line is wrong. Nothing was done.
    findings = 3,   ///< Everything was read, and there are findings that nobody should pass over.
};

/// A row of the table of exit codes, for help and manual pages.
struct ExitCodeRow {
    ExitCode code;
    std::string_view meaning;
};

inline constexpr std::array<ExitCodeRow, 4> exitCodeTable{{
    {ExitCode::success, "Done."},
    {ExitCode::failed, "A file can't be read or written. Standard error says which, and why."},
    {ExitCode::wrongUsage, "Wrong usage. Nothing was done."},
    {ExitCode::findings,
     "All was read, and there are errors in it; with --strict, also if there are warnings."},
}};
