#include "convert/Report.h"

#include "messages/FltText.h"

#include <nlohmann/json.hpp>
#include <unordered_map>
#include <utility>

using Json = nlohmann::ordered_json;

std::string ReportRun::text() const
{
    Json run;
    run["program"] = program;
    run["version"] = version;
    run["options"] = FltText::utf8(options);
    run["part"] = part.number;
    run["parts"] = part.count;
    run["databases"] = databases;
    Json line;
    line["run"] = std::move(run);
    return FltText::printableJson(line.dump()) + "\n";
}

std::optional<ReportRun> ReportRun::from(std::string_view text)
try {
    Json const json = Json::parse(text).at("run");
    ReportRun run;
    json.at("program").get_to(run.program);
    json.at("version").get_to(run.version);
    json.at("options").get_to(run.options);
    json.at("part").get_to(run.part.number);
    json.at("parts").get_to(run.part.count);
    json.at("databases").get_to(run.databases);
    return run;
} catch (nlohmann::json::exception const&) {
    return std::nullopt;
}

Report Report::from(std::string_view text)
{
    Report report;
    std::unordered_map<std::string, std::size_t> positions;
    while (!text.empty()) {
        std::size_t const end = text.find('\n');
        std::string_view const one = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (one.empty())
            continue;
        if (std::optional<ReportLine> line = ReportLine::from(one); line && end != std::string_view::npos) {
            auto const [known, isNew] = positions.try_emplace(line->input, report.lines.size());
            if (isNew)
                report.lines.push_back(std::move(*line));
            else
                report.lines[known->second] = std::move(*line);
        } else if (std::optional<ReportRun> run = ReportRun::from(one)) {
            report.run = std::move(*run);
        } else {
            ++report.torn;
        }
    }
    return report;
}
