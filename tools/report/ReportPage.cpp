#include "report/ReportPage.h"

#include "report/BarChart.h"
#include "report/Duration.h"
#include "report/ReportText.h"
#include "report/SvgText.h"
#include "report/TileMap.h"
#include "support/Numbers.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace
{

using Rows = std::vector<std::pair<std::string, std::string>>;

constexpr char const* head = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="default-src 'none'; style-src 'unsafe-inline'">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Report of a conversion</title>
<style>
:root { color-scheme: light dark; --ink: #1d2430; --paper: #fff; --faint: #6b7686; --line: #d5dae2; --bar: #3b72b0; }
@media (prefers-color-scheme: dark) {
  :root { --ink: #e4e8ef; --paper: #171b22; --faint: #98a2b3; --line: #343c49; --bar: #6ba3e0; }
}
body { font: 15px/1.5 system-ui, sans-serif; color: var(--ink); background: var(--paper); max-width: 1000px;
  margin: 2rem auto; padding: 0 1rem; }
h1 { font-size: 1.5rem; }
h2 { font-size: 1.1rem; margin-top: 2rem; }
table { border-collapse: collapse; }
th, td { text-align: left; vertical-align: top; padding: 0.15rem 1.2rem 0.15rem 0; border-bottom: 1px solid var(--line);
  overflow-wrap: anywhere; }
th { font-weight: 500; color: var(--faint); white-space: nowrap; }
figure { display: inline-block; width: 480px; max-width: 100%; margin: 1rem 1rem 0 0; }
figcaption { color: var(--faint); }
svg { width: 100%; height: auto; }
svg.bars rect { fill: var(--bar); }
svg.bars text { fill: var(--ink); font-size: 12px; text-anchor: middle; }
svg.map { border: 1px solid var(--line); margin-top: 0.5rem; max-height: 90vh; }
svg.map rect { stroke: var(--paper); stroke-width: 0.5; }
.legend { display: none; gap: 1rem; flex-wrap: wrap; margin: 0.5rem 0 0; padding: 0; list-style: none; }
.legend i { display: inline-block; width: 0.9em; height: 0.9em; margin-right: 0.4em; }
.wrong { color: #c8372d; }
input { margin-left: 1rem; }
)";

std::string heading(std::string const& text)
{
    return "<h2>" + SvgText::escaped(text) + "</h2>\n";
}

std::string row(std::string const& name, std::string const& value)
{
    return "<tr><th scope=\"row\">" + SvgText::escaped(name) + "</th><td>" + SvgText::escaped(value) +
           "</td></tr>\n";
}

/// A table under a heading; nothing if it is empty.
/// @param all how many rows there were
std::string table(std::string const& title, Rows const& rows, std::size_t all)
{
    if (rows.empty())
        return "";
    std::string text = heading(title) + "<table>\n";
    for (auto const& [name, value] : rows)
        text += row(name, value);
    text += "</table>\n";
    return all <= rows.size() ? text : text + "<p>and " + Numbers::grouped(all - rows.size()) + " more</p>\n";
}

/// How many databases have a number of each class.
BarChart histogram(std::string title, MergedReports::Lines const& lines,
                   double (*number)(ReportLine const& line),
                   std::vector<std::pair<double, std::string>> limits)
{
    std::vector<std::uint64_t> counts(limits.size(), 0);
    for (ReportLine const* line : lines) {
        if (line->exitCode != 0)
            continue;
        auto const above = std::find_if(limits.begin(), limits.end() - 1,
                                        [&](auto const& limit) { return number(*line) < limit.first; });
        ++counts[static_cast<std::size_t>(above - limits.begin())];
    }
    BarChart chart = {std::move(title), {}};
    for (std::size_t i = 0; i < limits.size(); ++i)
        chart.bars.push_back({limits[i].second, static_cast<double>(counts[i]), Numbers::grouped(counts[i])});
    return chart;
}

std::string charts(MergedReports const& reports, MergedReports::Lines const& lines)
{
    std::string text = heading("Charts");
    text += histogram("Databases by the time that each takes", lines,
                      [](ReportLine const& line) { return line.facts.seconds; },
                      {{0.001, "< 1 ms"},
                       {0.01, "< 10 ms"},
                       {0.1, "< 0.1 s"},
                       {1, "< 1 s"},
                       {10, "< 10 s"},
                       {0, "more"}})
                .svg();
    text += histogram("Results by their size", lines,
                      [](ReportLine const& line) { return static_cast<double>(line.bytesWritten); },
                      {{1e4, "< 10 kB"},
                       {1e5, "< 100 kB"},
                       {1e6, "< 1 MB"},
                       {1e7, "< 10 MB"},
                       {1e8, "< 100 MB"},
                       {0, "more"}})
                .svg();
    BarChart parts = {"Time of each part", {}};
    for (MergedReports::Part const& part : reports.parts())
        parts.bars.push_back(
            {std::to_string(part.run.part.number), part.seconds, Duration::text(part.seconds)});
    return parts.bars.size() > 1 ? text + parts.svg() : text;
}

/// What a map can be coloured by. The choices stand beside the map, so that the style sees which one is
/// taken.
struct Choice {
    char letter; ///< Of the classes.
    std::string name;
    std::vector<char const*> fills; ///< Of the classes.
    std::vector<std::string> words; ///< What these mean.

    std::string id() const { return std::string("by-") + letter; }

    std::string button(bool isTaken) const
    {
        return "<input type=\"radio\" name=\"by\" id=\"" + id() + "\"" + (isTaken ? " checked" : "") +
               "><label for=\"" + id() + "\">" + name + "</label>\n";
    }

    std::string style() const
    {
        std::string const isTaken = "#" + id() + ":checked ~ ";
        std::string text = isTaken + ".legend-" + letter + " { display: flex; }\n";
        for (std::size_t i = 0; i < fills.size(); ++i) {
            std::string const place = std::string(".") + letter + std::to_string(i);
            text.append(isTaken).append(".map ").append(place).append(" { fill: ").append(fills[i]);
            text.append("; }\n.legend ").append(place).append(" { background: ").append(fills[i]);
            text.append("; }\n");
        }
        return text;
    }

    std::string legend() const
    {
        std::string text = std::string("<ul class=\"legend legend-") + letter + "\">";
        for (std::size_t i = 0; i < words.size(); ++i)
            text += std::string("<li><i class=\"") + letter + std::to_string(i) + "\"></i>" +
                    SvgText::escaped(words[i]) + "</li>";
        return text + "</ul>\n";
    }
};

std::string map(MergedReports::Lines const& lines)
{
    using Colour = TileMap::Colour;
    TileMap const map(lines);
    if (map.isEmpty())
        return "";
    std::vector<char const*> const shades = {"#c6dbef", "#8fbfe0", "#4f97cf", "#1f68ae", "#08306b"};
    std::vector<char const*> const lamps = {"#7fb685", "#f0c95d", "#e58e3c", "#c8372d"};
    std::vector<Choice> const choices = {{'a', "time", shades, map.legend(Colour::time)},
                                         {'b', "triangles", shades, map.legend(Colour::triangles)},
                                         {'c', "trouble", lamps, map.legend(Colour::trouble)}};
    std::string buttons, styles, legends;
    for (Choice const& choice : choices) {
        buttons += choice.button(choice.letter == 'a');
        styles += choice.style();
        legends += choice.legend();
    }
    std::string text = heading("Map") + "<style>\n" + styles + "</style>\n<div>Coloured by\n" + buttons +
                       legends + map.svg() + "</div>\n";
    if (std::size_t const lost = lines.size() - map.placed(); lost != 0)
        text += "<p>" + Numbers::counted(lost, "database has", "databases have") +
                " no place: nothing is to be seen of them, or they have no origin.</p>\n";
    return text;
}

Rows failedIn(MergedReports::Lines const& failed, std::size_t most)
{
    Rows rows;
    for (std::size_t i = 0; i < std::min(most, failed.size()); ++i)
        rows.emplace_back(failed[i]->input, failed[i]->problem);
    return rows;
}

Rows slowestIn(MergedReports const& reports, std::size_t most)
{
    Rows rows;
    for (ReportLine const* line : reports.slowest(most))
        rows.emplace_back(Duration::text(line->facts.seconds), line->input);
    return rows;
}

Rows largestIn(MergedReports const& reports, std::size_t most)
{
    Rows rows;
    for (ReportLine const* line : reports.largest(most))
        rows.emplace_back(Numbers::bytes(line->bytesWritten), line->output);
    return rows;
}

Rows missingIn(std::vector<MergedReports::Missing> const& missing, std::size_t most)
{
    Rows rows;
    for (std::size_t i = 0; i < std::min(most, missing.size()); ++i)
        rows.emplace_back(Numbers::counted(missing[i].databases, "database", "databases"), missing[i].name);
    return rows;
}

/// What isn't as it should be, above all else.
std::string problems(MergedReports const& reports, std::size_t most)
{
    std::vector<std::string> all = ReportText::holes(reports);
    std::vector<std::string> const remarks = reports.remarks();
    all.insert(all.end(), remarks.begin(), remarks.end());
    if (all.empty())
        return "";
    std::string text = "<ul class=\"wrong\">\n";
    for (std::size_t i = 0; i < std::min(most, all.size()); ++i)
        text += "<li>" + SvgText::escaped(all[i]) + "</li>\n";
    if (all.size() > most)
        text += "<li>and " + Numbers::grouped(all.size() - most) + " more</li>\n";
    return text + "</ul>\n";
}

} // namespace

std::string ReportPage::of(MergedReports const& reports, std::size_t most)
{
    MergedReports::Lines const lines = reports.databases();
    MergedReports::Lines const failed = reports.failed();
    std::vector<MergedReports::Missing> const missing = reports.missingTextures();
    std::string page = std::string(head) + "</style>\n</head>\n<body>\n<h1>Report of a conversion</h1>\n";
    page += problems(reports, most) + "<table>\n";
    for (auto const& [name, value] : ReportText::figures(reports))
        page += row(name, value);
    page += "</table>\n" + charts(reports, lines) + map(lines);
    page += table("Not converted", failedIn(failed, most), failed.size());
    page += table("Slowest", slowestIn(reports, most), 0);
    page += table("Largest results", largestIn(reports, most), 0);
    page += table("Missing textures", missingIn(missing, most), missing.size());
    return page + "</body>\n</html>\n";
}
