// Tells what runs over many databases have done, from the reports of their parts.

#include "report/MergedReports.h"
#include "report/ReportJson.h"
#include "report/ReportPage.h"
#include "report/ReportText.h"
#include "support/JsonText.h"
#include "support/OutputFile.h"
#include "support/Program.h"

#include <algorithm>
#include <cstdio>

namespace
{

struct Options {
    std::vector<std::string> files;
    std::string output = "-";
    std::string most = "10";
    bool isJson = false;
    bool isPage = false;
};

ProgramDescription description()
{
    return {
        "fltreport",
        "say what runs over many databases have done, from their reports",
        "REPORT.jsonl...",
        {"flt2iv and flt2gltf write a report with --report: a line for each database that is done. A run "
         "by parts, on one computer or on many, has a report for each part; this program merges them.",
         "It tells how many databases were converted, which ones failed and why, which ones took longest "
         "and became largest, and which textures are missing. Of a part that was ended before its time it "
         "tells how many databases are absent.",
         "The page for browsers has charts, and a map of the databases coloured by time, triangles or "
         "trouble. It is one file without scripts."},
        {{"fltreport report.jsonl", "the report of a run"},
         {"fltreport reports/*.jsonl", "those of all its parts"},
         {"fltreport --html -o report.html reports/*.jsonl", "a page with charts and a map"},
         {"fltreport --json reports/*.jsonl", "everything, for a program"}},
        ExitCode::findings,
        {"flt2iv", "flt2gltf", "fltcheck"}};
}

std::size_t mostOf(std::string const& text)
{
    constexpr std::size_t digits = 6;
    bool const isNumber = !text.empty() && text.size() <= digits &&
                          std::all_of(text.begin(), text.end(),
                                      [](char character) { return character >= '0' && character <= '9'; });
    if (!isNumber)
        throw UsageError("--most takes a number from 0 to 999999, not " + text);
    return std::stoul(text);
}

ExitCode report(Program const& program, Options const& options)
{
    if (options.isJson && options.isPage)
        throw UsageError("--json and --html exclude each other");
    std::size_t const most = mostOf(options.most);
    MergedReports reports;
    for (std::string const& file : options.files)
        reports.add(file);
    for (std::string const& remark : reports.remarks())
        program.warn(remark);
    std::string const text = options.isPage   ? ReportPage::of(reports, most)
                             : options.isJson ? JsonText::of(ReportJson::of(reports, most))
                                              : ReportText::of(reports, most);
    std::vector<KeptFile> kept;
    for (std::string const& file : options.files)
        kept.push_back({file, "a report"});
    OutputFile output(options.output, kept);
    std::fwrite(text.data(), 1, text.size(), output.stream());
    output.commit();
    return reports.isWhole() ? ExitCode::success : ExitCode::findings;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    Program program(description());
    program.value("-o,--output", options.output, "FILE", "Where to write; - is standard output.");
    program.flag("--json", options.isJson, "Write a JSON object.");
    program.flag("--html", options.isPage, "Write a page for browsers.");
    program.value("--most", options.most, "N", "How many databases and textures a list holds at most.");
    program.inputs(options.files);
    return program.run(argc, argv, [&] { return report(program, options); });
}
