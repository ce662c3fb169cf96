// Writes databases that have something of what the package tells of them: FOLDER/parts.flt and so on.

#include "support/CompleteDatabase.h"

#include <filesystem>
#include <string>

namespace
{

using Fields = FltWriter::Fields;

constexpr int feet = 4;

/// A group that is moved by ten, a part that stands at two places, a joint, a switch, levels, lines.
CompleteDatabase parts()
{
    CompleteDatabase database;
    FltWriter& flt = database.writer;
    flt.add("TexturePattern", {{"fileName", "brick.rgb"}, {"patternIndex", 3}});
    std::vector<double> const square = database.square();
    std::vector<double> const five =
        database.polygon({{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {1, 2, 0}, {0, 1, 0}});
    database.begin().add("Group", {{"idASCII", "row"}}).add("Translate", {{"deltaX", 10}}).push();
    database.object(five, CompleteDatabase::face({{"texturePatternIndex", 3}}, CompleteDatabase::red),
                    "slab");
    flt.pop().add("InstanceDefinition", {{"instanceDefinitionNumber", 1}}).push();
    database.object(square, CompleteDatabase::face(), "tile").writer.pop();
    for (double const y : {20.0, 30.0})
        flt.add("InstanceReference", {{"instanceDefinitionNumber", 1}}).add("Translate", {{"deltaY", y}});
    flt.add("DOF", {{"idASCII", "door"},
                    {"XMinValue", -1},
                    {"XMaxValue", 4},
                    {"XCurrentValue", 2},
                    {"XIncrement", 0.5},
                    {"flags", 0x80000000}});
    flt.push();
    database.object(square, CompleteDatabase::face(), "leaf").writer.pop();
    flt.add("Switch", {{"idASCII", "lamp"},
                       {"indexOfCurrentMask", 1},
                       {"numberOfMasks", 2},
                       {"numberOf32BitWordsPerMask", 2},
                       {"masks", {1, 0, 2, 0x100}}});
    flt.addRaw(132, FltWriter::big32(1) + std::string("on\0", 3)).push();
    database.object(square, CompleteDatabase::face(), "dark");
    database.object(square, CompleteDatabase::face(), "bright").writer.pop();
    for (auto const& [name, nearest, farthest] :
         {std::tuple("fine", 0, 100), std::tuple("coarse", 100, 1000)}) {
        flt.add("LOD", {{"switchInDistance", farthest}, {"switchOutDistance", nearest}}).push();
        database.object(square, CompleteDatabase::face(), name).writer.pop();
    }
    database.object(square, CompleteDatabase::face({{"drawType", 3}, {"lightMode", 0}}), "wire");
    flt.pop();
    return database;
}

/// A square with sides of a foot.
CompleteDatabase footprint()
{
    CompleteDatabase database(1570, {{"vertexCoordinateUnits", feet}});
    std::vector<double> const square = database.square();
    database.begin();
    database.object(square).writer.pop();
    return database;
}

/// A database in metres that refers to it.
CompleteDatabase site()
{
    CompleteDatabase database;
    std::vector<double> const square = database.square(5);
    database.begin().add("ExternalReference", {{"asciiPath", "footprint.flt"}});
    database.object(square).writer.pop();
    return database;
}

/// A square at the coordinates of a map.
CompleteDatabase far()
{
    CompleteDatabase database;
    std::vector<double> const square = database.square(4'500'000.3, 5'300'000.7, 12);
    database.begin();
    database.object(square).writer.pop();
    return database;
}

} // namespace

int main(int /*count*/, char** arguments)
{
    std::string const folder = std::string(arguments[1]) + '/';
    std::filesystem::create_directories(folder);
    parts().writer.save(folder + "parts.flt");
    footprint().writer.save(folder + "footprint.flt");
    site().writer.save(folder + "site.flt");
    far().writer.save(folder + "far.flt");
    return 0;
}
