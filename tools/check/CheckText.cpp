#include "check/CheckText.h"

#include "support/Numbers.h"

#include "messages/FltText.h"
#include "records/FltOpcodeName.h"

namespace
{

using Severity = FltFindingKind::Severity;

} // namespace

std::string CheckText::inColour(Severity severity) const
{
    std::string const name = CheckedFile::nameOf(severity);
    return severity == Severity::error     ? colours.red(name)
           : severity == Severity::warning ? colours.yellow(name)
                                           : colours.blue(name);
}

std::string CheckText::lineOf(FltFinding const& finding) const
{
    std::string line = colours.bold(FltText::printable(finding.file)) + ":";
    if (finding.offset != FltFinding::nowhere)
        line += std::to_string(finding.offset) + ":";
    line += " " + inColour(finding.kind->severity) + ": " + std::string(finding.kind->title);
    if (!finding.text.empty())
        line += ": " + FltText::printable(finding.text);
    std::string where = finding.opcode != 0 ? FltOpcodeName::of(finding.opcode) : "";
    if (!finding.node.empty())
        where += (where.empty() ? "in " : " in ") + FltText::printable(finding.node);
    if (finding.count > 1)
        where += (where.empty() ? "" : ", ") + Numbers::grouped(finding.count) + " times";
    if (!where.empty())
        line += " (" + where + ")";
    return line + " " + colours.dim("[" + finding.kind->code() + "]") + "\n";
}

/// "2 errors, 1 note"
std::string CheckText::summaryOf(FindingCounts const& counts) const
{
    std::string summary;
    auto const add = [&summary](std::uint64_t count, Severity severity) {
        std::string const name = CheckedFile::nameOf(severity);
        if (count != 0)
            summary += (summary.empty() ? "" : ", ") + Numbers::counted(count, name, name + "s");
    };
    add(counts.errors, Severity::error);
    add(counts.warnings, Severity::warning);
    add(counts.notes, Severity::note);
    return summary.empty() ? colours.green("nothing found") : summary;
}

std::string CheckText::totalOf(FindingCounts const& counts, std::size_t files, std::size_t unreadable) const
{
    if (isQuiet)
        return "";
    std::string const lost =
        unreadable == 0 ? "" : ", " + colours.red(Numbers::grouped(unreadable) + " can't be read");
    return colours.bold(Numbers::counted(files, "file", "files") + " checked") + lost + ": " +
           summaryOf(counts) + "\n";
}

std::string CheckText::of(CheckedFile const& checked) const
{
    if (!checked.problem.empty())
        return "";
    std::string text;
    for (FltFinding const& finding : checked.findings)
        if (!isQuiet || finding.kind->severity == Severity::error)
            text += lineOf(finding);
    if (isQuiet)
        return text;
    for (auto const& [number, more] : checked.leftOut)
        text += colours.bold(FltText::printable(checked.file)) + ": " + Numbers::grouped(more) + " more of " +
                FltFindingTable::of(number).code() + "\n";
    return text + colours.bold(FltText::printable(checked.file)) + ": " + summaryOf(checked.counts()) + "\n";
}

std::string CheckText::pageOf(FltFindingKind const& kind)
{
    return "# " + kind.code() + ": " + std::string(kind.title) +
           "\n\nSeverity: " + CheckedFile::nameOf(kind.severity) + "\n\n## Why it matters\n\n" +
           std::string(kind.why) + "\n\n## How to mend it\n\n" + std::string(kind.mend) + "\n";
}

std::string CheckText::table() const
{
    std::string text;
    for (FltFindingKind const& kind : FltFindingTable()) {
        std::string const name = CheckedFile::nameOf(kind.severity);
        text += colours.bold(kind.code()) + "  " + inColour(kind.severity) +
                std::string(9 - name.size(), ' ') + std::string(kind.title) + "\n";
    }
    return text;
}
