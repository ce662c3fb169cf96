#include "convert/ReportRun.h"

#include "messages/FltText.h"

#include <nlohmann/json.hpp>
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
