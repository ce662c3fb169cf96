#include "convert/ConversionFacts.h"

#include "convert/TileFacts.h"
#include "messages/FltText.h"

#include <cmath>
#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;

namespace
{

/// JSON has no form for what is no number, which a damaged header may hold.
double asNumber(double number)
{
    return std::isfinite(number) ? number : 0;
}

} // namespace

void ConversionFacts::addTo(Json& json) const
{
    json["seconds"] = seconds;
    json["memory"] = memory;
    json["messages"] = {{"remark", messages[0]}, {"warning", messages[1]}, {"error", messages[2]}};
    Json missing = Json::array();
    for (std::string const& name : missingTextures)
        missing.push_back(FltText::utf8(name));
    json["missing"] = std::move(missing);
    json["triangles"] = triangles;
    if (box)
        json["box"] = {box->least, box->most};
    if (tile)
        json["tile"] = TileFacts::jsonOf(*tile);
    json["origin"] = {{"latitude", asNumber(latitude)},
                      {"longitude", asNumber(longitude)},
                      {"projection", projection},
                      {"ellipsoid", ellipsoid}};
    if (beside) {
        Json& written = json["beside"] = Json::array();
        for (File const& file : *beside)
            written.push_back({FltText::utf8(file.path), file.bytes});
    }
    Json files = Json::array();
    for (NeededFiles::File const& file : needs)
        files.push_back({FltText::utf8(file.path), file.stamp.size, file.stamp.time});
    json["needs"] = std::move(files);
    json["settled"] = isSettled;
}

ConversionFacts ConversionFacts::from(Json const& json)
{
    ConversionFacts facts;
    json.at("seconds").get_to(facts.seconds);
    json.at("memory").get_to(facts.memory);
    Json const& messages = json.at("messages");
    facts.messages = {messages.at("remark"), messages.at("warning"), messages.at("error")};
    json.at("missing").get_to(facts.missingTextures);
    json.at("triangles").get_to(facts.triangles);
    if (json.contains("box"))
        facts.box = Box{json["box"].at(0).get<std::array<double, 3>>(),
                        json["box"].at(1).get<std::array<double, 3>>()};
    if (json.contains("tile"))
        facts.tile = TileFacts::from(json["tile"]);
    Json const& origin = json.at("origin");
    origin.at("latitude").get_to(facts.latitude);
    origin.at("longitude").get_to(facts.longitude);
    origin.at("projection").get_to(facts.projection);
    origin.at("ellipsoid").get_to(facts.ellipsoid);
    if (json.contains("beside")) {
        facts.beside.emplace();
        for (Json const& file : json["beside"])
            facts.beside->push_back({file.at(0).get<std::string>(), file.at(1)});
    }
    for (Json const& file : json.at("needs"))
        facts.needs.push_back({file.at(0).get<std::string>(), {file.at(1), file.at(2)}});
    json.at("settled").get_to(facts.isSettled);
    return facts;
}
