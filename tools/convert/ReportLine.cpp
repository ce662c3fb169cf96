#include "convert/ReportLine.h"

#include "messages/FltText.h"

#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;

std::string ReportLine::text() const
{
    Json json;
    json["input"] = FltText::utf8(input);
    json["output"] = FltText::utf8(output);
    json["exit"] = exitCode;
    if (!problem.empty())
        json["problem"] = FltText::utf8(problem);
    json["read"] = bytesRead;
    json["bytes"] = bytesWritten;
    Json list = Json::array();
    for (std::string const& name : names)
        list.push_back(FltText::utf8(name));
    json["names"] = std::move(list);
    facts.addTo(json);
    return FltText::printableJson(json.dump(-1, ' ', false, Json::error_handler_t::replace)) + "\n";
}

std::optional<ReportLine> ReportLine::from(std::string_view text)
try {
    Json const json = Json::parse(text);
    ReportLine line;
    json.at("input").get_to(line.input);
    json.at("output").get_to(line.output);
    json.at("exit").get_to(line.exitCode);
    line.problem = json.value("problem", "");
    json.at("read").get_to(line.bytesRead);
    json.at("bytes").get_to(line.bytesWritten);
    json.at("names").get_to(line.names);
    line.facts = ConversionFacts::from(json);
    return line;
} catch (nlohmann::json::exception const&) {
    return std::nullopt;
}
