#include "report/ReportJson.h"

#include <string>

using Json = nlohmann::ordered_json;

namespace
{

Json partsOf(MergedReports const& reports)
{
    Json parts = Json::array();
    for (MergedReports::Part const& part : reports.parts())
        parts.push_back({{"report", part.file},
                         {"part", part.run.part.number},
                         {"databases", part.run.databases},
                         {"converted", part.converted},
                         {"failed", part.failed},
                         {"absent", part.absent()},
                         {"seconds", part.seconds}});
    return parts;
}

Json gapsOf(MergedReports const& reports)
{
    Json gaps = Json::array();
    for (auto const& [first, last] : reports.gaps())
        gaps.push_back({first, last});
    return gaps;
}

Json sumsOf(MergedReports::Totals const& totals)
{
    return {
        {"converted", totals.converted},
        {"failed", totals.failed},
        {"absent", totals.absent},
        {"read", totals.bytesRead},
        {"written", totals.bytesWritten},
        {"triangles", totals.triangles},
        {"seconds", totals.seconds},
        {"memory", totals.memory},
        {"messages",
         {{"remark", totals.messages[0]}, {"warning", totals.messages[1]}, {"error", totals.messages[2]}}}};
}

Json slowestOf(MergedReports const& reports, std::size_t most)
{
    Json list = Json::array();
    for (ReportLine const* line : reports.slowest(most))
        list.push_back({{"input", line->input}, {"seconds", line->facts.seconds}});
    return list;
}

Json largestOf(MergedReports const& reports, std::size_t most)
{
    Json list = Json::array();
    for (ReportLine const* line : reports.largest(most))
        list.push_back({{"output", line->output}, {"bytes", line->bytesWritten}});
    return list;
}

} // namespace

Json ReportJson::of(MergedReports const& reports, std::size_t most)
{
    ReportRun const& run = reports.parts().front().run;
    Json failed = Json::array(), missing = Json::array();
    for (ReportLine const* line : reports.failed())
        failed.push_back({{"input", line->input}, {"problem", line->problem}});
    for (MergedReports::Missing const& texture : reports.missingTextures())
        missing.push_back({{"name", texture.name}, {"databases", texture.databases}});
    Json json;
    json["program"] = run.program;
    json["version"] = run.version;
    json["options"] = run.options;
    json["parts"] = run.part.count;
    json["totals"] = sumsOf(reports.totals());
    json["reports"] = partsOf(reports);
    json["gaps"] = gapsOf(reports);
    json["failed"] = std::move(failed);
    json["slowest"] = slowestOf(reports, most);
    json["largest"] = largestOf(reports, most);
    json["missingTextures"] = std::move(missing);
    json["remarks"] = reports.remarks();
    return json;
}
