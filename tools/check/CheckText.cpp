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

std::string CheckText::summaryOf(CheckedFile const& checked) const
{
    std::string summary;
    for (Severity const severity : {Severity::error, Severity::warning, Severity::note})
        if (std::uint64_t const count = checked.count(severity))
            summary += (summary.empty() ? "" : ", ") + Numbers::counted(count, CheckedFile::nameOf(severity),
                                                                        CheckedFile::nameOf(severity) + "s");
    return colours.bold(FltText::printable(checked.file)) + ": " +
           (summary.empty() ? colours.green("nothing found") : summary) + "\n";
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
    return text + summaryOf(checked);
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
