#include "report/ReportText.h"

#include "report/Duration.h"
#include "support/Numbers.h"

#include "messages/FltText.h"

#include <algorithm>

namespace
{

std::string wordsOf(ReportRun const& run)
{
    return run.program + " " + run.version + (run.options.empty() ? "" : " " + run.options);
}

std::string messagesOf(MergedReports::Totals const& totals)
{
    return Numbers::counted(totals.messages[2], "error", "errors") + ", " +
           Numbers::counted(totals.messages[1], "warning", "warnings") + ", " +
           Numbers::counted(totals.messages[0], "remark", "remarks");
}

/// A list under a head; nothing if there is nothing in it.
class List
{
public:
    explicit List(std::string head) : head(std::move(head)) {}

    void add(std::string const& number, std::string const& what) { rows.emplace_back(number, what); }

    /// @param left how many more there are
    std::string text(std::size_t left) const
    {
        if (rows.empty())
            return "";
        std::size_t width = 0;
        for (auto const& [number, what] : rows)
            width = std::max(width, number.size());
        std::string text = "\n" + head + "\n";
        for (auto const& [number, what] : rows)
            text += "  " + std::string(width - number.size(), ' ') + number + (width == 0 ? "" : "  ") +
                    FltText::printable(what) + "\n";
        return left == 0 ? text : text + "  and " + Numbers::grouped(left) + " more\n";
    }

private:
    std::string head;
    std::vector<std::pair<std::string, std::string>> rows;
};

std::string failedIn(MergedReports const& reports, std::size_t most)
{
    List list("Not converted");
    MergedReports::Lines const failed = reports.failed();
    for (std::size_t i = 0; i < std::min(most, failed.size()); ++i)
        list.add("", failed[i]->problem);
    return list.text(failed.size() - std::min(most, failed.size()));
}

std::string missingIn(MergedReports const& reports, std::size_t most)
{
    List list("Missing textures, and how many databases they darken");
    std::vector<MergedReports::Missing> const missing = reports.missingTextures();
    for (std::size_t i = 0; i < std::min(most, missing.size()); ++i)
        list.add(Numbers::grouped(missing[i].databases), missing[i].name);
    return list.text(missing.size() - std::min(most, missing.size()));
}

} // namespace

std::vector<std::pair<std::string, std::string>> ReportText::figures(MergedReports const& reports)
{
    MergedReports::Totals const totals = reports.totals();
    ReportRun const& run = reports.parts().front().run;
    std::string databases = Numbers::grouped(totals.converted) + " converted";
    if (totals.failed != 0)
        databases += ", " + Numbers::grouped(totals.failed) + " failed";
    if (totals.absent != 0)
        databases += ", " + Numbers::grouped(totals.absent) + " absent";
    return {{"run", wordsOf(run)},
            {"parts", Numbers::grouped(reports.parts().size()) + " of " + Numbers::grouped(run.part.count)},
            {"databases", databases},
            {"read", Numbers::bytes(totals.bytesRead)},
            {"written", Numbers::bytes(totals.bytesWritten)},
            {"triangles", Numbers::grouped(totals.triangles)},
            {"time of all", Duration::text(totals.seconds)},
            {"most memory", Numbers::bytes(totals.memory)},
            {"messages", messagesOf(totals)}};
}

std::vector<std::string> ReportText::holes(MergedReports const& reports)
{
    std::vector<std::string> holes;
    for (MergedReports::Part const& part : reports.parts())
        if (part.absent() != 0)
            holes.push_back("part " + part.run.part.name() + ": " + Numbers::grouped(part.absent()) + " of " +
                            Numbers::counted(part.run.databases, "database", "databases") + " absent in " +
                            part.file);
    for (auto const& [first, last] : reports.gaps())
        holes.push_back(first == last ? "part " + std::to_string(first) + ": no report"
                                      : "parts " + std::to_string(first) + " to " + std::to_string(last) +
                                            ": no reports");
    return holes;
}

std::string ReportText::of(MergedReports const& reports, std::size_t most)
{
    constexpr std::size_t width = 13;
    std::string text;
    for (auto const& [name, value] : figures(reports))
        text +=
            name + std::string(width - std::min(width, name.size()), ' ') + FltText::printable(value) + "\n";
    List parts("Parts that aren't whole");
    std::vector<std::string> const missing = holes(reports);
    for (std::size_t i = 0; i < std::min(most, missing.size()); ++i)
        parts.add("", missing[i]);
    text += parts.text(missing.size() - std::min(most, missing.size())) + failedIn(reports, most);
    List slowest("Slowest");
    for (ReportLine const* line : reports.slowest(most))
        slowest.add(Duration::text(line->facts.seconds), line->input);
    List largest("Largest results");
    for (ReportLine const* line : reports.largest(most))
        largest.add(Numbers::bytes(line->bytesWritten), line->output);
    return text + slowest.text(0) + largest.text(0) + missingIn(reports, most);
}
