#include "convert/TileFacts.h"

#include "messages/FltText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;

namespace
{

constexpr std::size_t numbersOfMatrix = 16;

Json jsonOf(SbVec3d const& place)
{
    return {place[0], place[1], place[2]};
}

SbVec3d vectorOf(Json const& json)
{
    return SbVec3d(json.get<std::array<double, 3>>().data());
}

Json jsonOf(SbDPMatrix const& matrix)
{
    Json numbers = Json::array();
    for (std::size_t i = 0; i < numbersOfMatrix; ++i)
        numbers.push_back(matrix[static_cast<int>(i / 4)][static_cast<int>(i % 4)]);
    return numbers;
}

SbDPMatrix matrixOf(Json const& json)
{
    auto const numbers = json.get<std::array<double, numbersOfMatrix>>();
    SbDPMatrix matrix = SbDPMatrix::identity();
    for (std::size_t i = 0; i < numbersOfMatrix; ++i)
        matrix[static_cast<int>(i / 4)][static_cast<int>(i % 4)] = numbers.at(i);
    return matrix;
}

/// JSON has no form for what is no number.
bool isFinite(SbDPMatrix const& matrix)
{
    for (std::size_t i = 0; i < numbersOfMatrix; ++i)
        if (!std::isfinite(matrix[static_cast<int>(i / 4)][static_cast<int>(i % 4)]))
            return false;
    return true;
}

} // namespace

Json TileFacts::jsonOf(FltTile const& tile)
{
    Json json = Json::object();
    if (tile.place)
        json["place"] = {tile.place->latitude, tile.place->longitude, tile.place->height};
    if (!tile.box.isEmpty())
        json["box"] = {::jsonOf(tile.box.getMin()), ::jsonOf(tile.box.getMax())};
    for (FltTile::Level const& level : tile.coarser)
        json["coarser"].push_back({{"file", FltText::utf8(level.file)}, {"distance", level.distance}});
    for (FltTile::Reference const& reference : tile.references)
        if (isFinite(reference.matrix))
            json["references"].push_back(
                {{"file", FltText::utf8(reference.file)}, {"matrix", ::jsonOf(reference.matrix)}});
    return json;
}

FltTile TileFacts::from(Json const& json)
{
    FltTile tile;
    if (json.contains("place")) {
        SbVec3d const place = vectorOf(json["place"]);
        tile.place = FltProjection::Place{place[0], place[1], place[2]};
    }
    if (json.contains("box"))
        tile.box = {vectorOf(json["box"].at(0)), vectorOf(json["box"].at(1))};
    for (Json const& level : json.value("coarser", Json::array()))
        tile.coarser.push_back({level.at("file").get<std::string>(), level.at("distance").get<double>()});
    for (Json const& reference : json.value("references", Json::array()))
        tile.references.push_back(
            {reference.at("file").get<std::string>(), matrixOf(reference.at("matrix"))});
    return tile;
}
