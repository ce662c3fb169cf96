#include "check/CheckJson.h"

#include "support/Program.h"

#include "records/FltOpcodeName.h"

#include <cctype>
#include <nlohmann/json.hpp>

namespace
{

using Json = nlohmann::ordered_json;

Json findingOf(FltFinding const& finding)
{
    Json json = {{"code", finding.kind->code()},
                 {"severity", CheckedFile::nameOf(finding.kind->severity)},
                 {"title", finding.kind->title},
                 {"text", finding.text},
                 {"file", finding.file},
                 {"offset", nullptr},
                 {"opcode", nullptr},
                 {"record", nullptr},
                 {"node", nullptr},
                 {"count", finding.count}};
    if (finding.offset != FltFinding::nowhere)
        json["offset"] = finding.offset;
    if (finding.opcode != 0) {
        json["opcode"] = finding.opcode;
        json["record"] = FltOpcodeName::of(finding.opcode);
    }
    if (!finding.node.empty())
        json["node"] = finding.node;
    return json;
}

Json countsOf(CheckedFile const& checked)
{
    FindingCounts const counts = checked.counts();
    return {{"error", counts.errors}, {"warning", counts.warnings}, {"note", counts.notes}};
}

/// A file's name as a relative or absolute reference.
std::string uriOf(std::string const& file)
{
    static constexpr char hex[] = "0123456789ABCDEF";
    std::string uri;
    for (char const character : file) {
        auto const byte = static_cast<unsigned char>(character);
        if (std::isalnum(byte) != 0 || std::string_view("-._~/").find(character) != std::string_view::npos)
            uri += character;
        else
            uri += {'%', hex[byte >> 4], hex[byte & 15]};
    }
    return !uri.empty() && uri[0] == '/' ? "file://" + uri : uri;
}

Json rules()
{
    Json list = Json::array();
    for (FltFindingKind const& kind : FltFindingTable())
        list.push_back({{"id", kind.code()},
                        {"shortDescription", {{"text", kind.title}}},
                        {"fullDescription", {{"text", kind.why}}},
                        {"help", {{"text", kind.mend}}},
                        {"defaultConfiguration", {{"level", CheckedFile::nameOf(kind.severity)}}}});
    return list;
}

Json resultOf(FltFinding const& finding)
{
    Json location = {{"physicalLocation", {{"artifactLocation", {{"uri", uriOf(finding.file)}}}}}};
    if (finding.offset != FltFinding::nowhere)
        location["physicalLocation"]["region"] = {{"byteOffset", finding.offset}};
    if (!finding.node.empty())
        location["logicalLocations"] =
            Json::array({{{"fullyQualifiedName", finding.node}, {"kind", "element"}}});
    std::string const text =
        std::string(finding.kind->title) + (finding.text.empty() ? "" : ": " + finding.text);
    return {{"ruleId", finding.kind->code()},
            {"ruleIndex", finding.kind - FltFindingTable::begin()},
            {"level", CheckedFile::nameOf(finding.kind->severity)},
            {"message", {{"text", text}}},
            {"locations", Json::array({std::move(location)})},
            {"occurrenceCount", finding.count}};
}

/// What kept a file from being checked.
Json notificationOf(CheckedFile const& checked)
{
    return {{"level", "error"},
            {"message", {{"text", checked.problem}}},
            {"locations",
             Json::array({{{"physicalLocation", {{"artifactLocation", {{"uri", uriOf(checked.file)}}}}}}})}};
}

} // namespace

nlohmann::ordered_json CheckJson::of(std::vector<CheckedFile> const& files)
{
    Json list = Json::array();
    for (CheckedFile const& checked : files) {
        Json findings = Json::array();
        for (FltFinding const& finding : checked.findings)
            findings.push_back(findingOf(finding));
        Json leftOut = Json::object();
        for (auto const& [number, more] : checked.leftOut)
            leftOut[FltFindingTable::of(number).code()] = more;
        list.push_back({{"file", checked.file},
                        {"problem", checked.problem.empty() ? Json() : Json(checked.problem)},
                        {"counts", countsOf(checked)},
                        {"findings", std::move(findings)},
                        {"leftOut", std::move(leftOut)}});
    }
    return {{"version", Program::version()}, {"files", std::move(list)}};
}

nlohmann::ordered_json CheckJson::sarifOf(std::vector<CheckedFile> const& files)
{
    Json results = Json::array();
    Json notifications = Json::array();
    for (CheckedFile const& checked : files) {
        for (FltFinding const& finding : checked.findings)
            results.push_back(resultOf(finding));
        if (!checked.problem.empty())
            notifications.push_back(notificationOf(checked));
    }
    Json const driver = {{"name", "fltcheck"}, {"version", Program::version()}, {"rules", rules()}};
    Json const invocation = {{"executionSuccessful", notifications.empty()},
                             {"toolExecutionNotifications", notifications}};
    Json run = {{"tool", {{"driver", driver}}},
                {"invocations", Json::array({invocation})},
                {"results", std::move(results)}};
    return {{"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
            {"version", "2.1.0"},
            {"runs", Json::array({std::move(run)})}};
}
