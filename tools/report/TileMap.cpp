#include "report/TileMap.h"

#include "report/Duration.h"
#include "report/SvgText.h"
#include "support/Numbers.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <utility>

namespace
{

constexpr double size = 1000;             ///< Of the longer side of the map.
constexpr double smallest = 2;            ///< So that a house can be seen.
constexpr std::size_t mostTiles = 20'000; ///< That a browser draws at once.
constexpr double cells = 150;             ///< Of a side, where there are more.
constexpr double farthest = 1e12;         ///< No place on the earth or in a map.
constexpr double metresOfADegree = 40'007'863. / 360;

double radians(double degrees)
{
    return degrees * 3.14159265358979323846 / 180;
}

bool isPlaced(ReportLine const& line)
{
    auto const isNear = [](double number) { return std::abs(number) < farthest; };
    return line.facts.box && std::abs(line.facts.latitude) <= 90 && std::abs(line.facts.longitude) <= 360 &&
           std::all_of(line.facts.box->least.begin(), line.facts.box->least.end(), isNear) &&
           std::all_of(line.facts.box->most.begin(), line.facts.box->most.end(), isNear);
}

/// Whether a result stands on the globe: its box counts from its own place there.
bool isOnGlobe(ReportLine const& line)
{
    return line.facts.tile && line.facts.tile->place;
}

/// Whether a database tells where on the earth it is. What stands at several places doesn't, such as a house.
bool hasOrigin(ReportLine const& line)
{
    return line.facts.projection != 0 || line.facts.latitude != 0 || line.facts.longitude != 0;
}

/// Where the zero of a result is: latitude and longitude.
std::pair<double, double> zeroOf(ReportLine const& line)
{
    if (isOnGlobe(line))
        return {line.facts.tile->place->latitude, line.facts.tile->place->longitude};
    return {line.facts.latitude, line.facts.longitude};
}

/// How far the zero of a result is from that of another one. Only on the globe and on a flat earth each has
/// its own.
std::pair<double, double> wayOf(ReportLine const& line, ReportLine const& first)
{
    if (line.facts.projection != 0 && !isOnGlobe(line))
        return {0, 0};
    auto const [latitude, longitude] = zeroOf(line);
    auto const [firstLatitude, firstLongitude] = zeroOf(first);
    double const east =
        std::remainder(longitude - firstLongitude, 360) * metresOfADegree * std::cos(radians(firstLatitude));
    return {east, (latitude - firstLatitude) * metresOfADegree};
}

std::size_t troubleOf(ReportLine const& line)
{
    return line.facts.messages[2] != 0           ? 3
           : !line.facts.missingTextures.empty() ? 2
           : line.facts.messages[1] != 0         ? 1
                                                 : 0;
}

std::string textOf(ReportLine const& line)
{
    std::string text = line.input + ": " + Duration::text(line.facts.seconds) + ", " +
                       Numbers::counted(line.facts.triangles, "triangle", "triangles");
    if (line.facts.messages[2] != 0)
        text += ", " + Numbers::counted(line.facts.messages[2], "error", "errors");
    if (line.facts.messages[1] != 0)
        text += ", " + Numbers::counted(line.facts.messages[1], "warning", "warnings");
    if (!line.facts.missingTextures.empty())
        text +=
            ", " + Numbers::counted(line.facts.missingTextures.size(), "texture", "textures") + " missing";
    return text;
}

} // namespace

std::vector<TileMap::Tile> TileMap::placed(MergedReports::Lines const& databases)
{
    std::vector<Tile> tiles;
    ReportLine const* first = nullptr;
    auto const have = [&](bool (*isSo)(ReportLine const&)) {
        return std::any_of(databases.begin(), databases.end(),
                           [isSo](ReportLine const* line) { return isSo(*line); });
    };
    auto const isWanted = have(isOnGlobe) ? isOnGlobe : have(hasOrigin) ? hasOrigin : isPlaced;
    for (ReportLine const* line : databases) {
        if (!isPlaced(*line) || !isWanted(*line))
            continue;
        first = first == nullptr ? line : first;
        auto const [x, y] = wayOf(*line, *first);
        ConversionFacts::Box const& box = *line->facts.box;
        tiles.push_back({box.least[0] + x, box.least[1] + y, box.most[0] + x, box.most[1] + y,
                         line->facts.seconds, static_cast<double>(line->facts.triangles), troubleOf(*line),
                         textOf(*line)});
    }
    return tiles;
}

TileMap::TileMap(MergedReports::Lines const& databases) : tiles(placed(databases)), count(tiles.size())
{
    if (tiles.empty())
        return;
    west = east = tiles.front().west;
    south = north = tiles.front().south;
    for (Tile const& tile : tiles) {
        west = std::min(west, tile.west);
        south = std::min(south, tile.south);
        east = std::max(east, tile.east);
        north = std::max(north, tile.north);
    }
    if (tiles.size() > mostTiles)
        join();
    std::vector<double> times, triangles;
    for (Tile const& tile : tiles) {
        times.push_back(tile.seconds);
        triangles.push_back(tile.triangles);
    }
    timeLimits = limitsOf(std::move(times));
    triangleLimits = limitsOf(std::move(triangles));
    auto const areaOf = [](Tile const& tile) { return (tile.east - tile.west) * (tile.north - tile.south); };
    std::stable_sort(tiles.begin(), tiles.end(), [&](Tile const& one, Tile const& other) {
        return areaOf(one) > areaOf(other); // small ones lie on large ones
    });
}

/// Puts what lies together into cells, of which each shows the worst.
void TileMap::join()
{
    double const side = std::max({east - west, north - south, 1e-6}) / cells;
    std::map<std::pair<int, int>, Tile> joined;
    for (Tile const& tile : tiles) {
        int const column = static_cast<int>(((tile.west + tile.east) / 2 - west) / side);
        int const row = static_cast<int>(((tile.south + tile.north) / 2 - south) / side);
        double const x = west + column * side, y = south + row * side;
        auto const [known, isNew] =
            joined.try_emplace({row, column}, Tile{x, y, x + side, y + side, 0, 0, 0, "", 0});
        Tile& cell = known->second;
        if (tile.seconds >= cell.seconds)
            cell.text = tile.text;
        cell.seconds = std::max(cell.seconds, tile.seconds);
        cell.triangles = std::max(cell.triangles, tile.triangles);
        cell.trouble = std::max(cell.trouble, tile.trouble);
        ++cell.databases;
    }
    tiles.clear();
    for (auto& [place, cell] : joined)
        tiles.push_back(std::move(cell));
}

/// Five classes that hold about as many each.
TileMap::Limits TileMap::limitsOf(std::vector<double> values)
{
    Limits limits{};
    std::sort(values.begin(), values.end());
    for (std::size_t i = 0; i < limits.size(); ++i)
        limits[i] = values[(values.size() - 1) * (i + 1) / (limits.size() + 1)];
    return limits;
}

std::size_t TileMap::classOf(double value, Limits const& limits)
{
    return static_cast<std::size_t>(std::lower_bound(limits.begin(), limits.end(), value) - limits.begin());
}

std::string TileMap::svg() const
{
    double const scale = size / std::max({east - west, north - south, 1e-6});
    double const wide = std::max((east - west) * scale, smallest);
    double const high = std::max((north - south) * scale, smallest);
    std::string svg = "<svg class=\"map\" viewBox=\"0 0 " + SvgText::number(wide) + " " +
                      SvgText::number(high) + "\" role=\"img\" aria-label=\"Map of " +
                      Numbers::counted(count, "database", "databases") + "\">\n";
    for (Tile const& tile : tiles) {
        double const width = std::max((tile.east - tile.west) * scale, smallest);
        double const height = std::max((tile.north - tile.south) * scale, smallest);
        std::string const text =
            tile.databases > 1 ? Numbers::grouped(tile.databases) + " databases; the slowest: " + tile.text
                               : tile.text;
        svg += "<rect class=\"a" + std::to_string(classOf(tile.seconds, timeLimits)) + " b" +
               std::to_string(classOf(tile.triangles, triangleLimits)) + " c" + std::to_string(tile.trouble) +
               "\" x=\"" + SvgText::number((tile.west - west) * scale) + "\" y=\"" +
               SvgText::number(high - (tile.south - south) * scale - height) + "\" width=\"" +
               SvgText::number(width) + "\" height=\"" + SvgText::number(height) + "\"><title>" +
               SvgText::escaped(text) + "</title></rect>\n";
    }
    return svg + "</svg>\n";
}

std::vector<std::string> TileMap::legend(Colour colour) const
{
    if (colour == Colour::trouble)
        return {"nothing said", "warnings", "textures missing", "errors"};
    bool const isTime = colour == Colour::time;
    auto const textOf = [isTime](double value) {
        return isTime ? Duration::text(value) : Numbers::grouped(static_cast<std::uint64_t>(value));
    };
    Limits const& limits = isTime ? timeLimits : triangleLimits;
    std::vector<std::string> words;
    for (double const limit : limits)
        words.push_back("up to " + textOf(limit));
    words.push_back("more");
    return words;
}
