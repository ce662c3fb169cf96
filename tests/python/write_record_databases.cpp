// Writes databases whose records the package's tests read: FOLDER/columns.flt and so on.

#include "writer/EveryRecord.h"

#include <filesystem>
#include <limits>
#include <string>

namespace
{

constexpr int comment = 31;

/// Many faces, texts of different lengths, lists of different lengths, numbers that aren't finite.
FltWriter columns()
{
    FltWriter flt;
    flt.add("VertexPalette")
        .add("VertexColorNormalUv",
             {{"Xcoordinate", 1.5},
              {"Ycoordinate", 2.5},
              {"Zcoordinate", 3.5},
              {"vertexNormal",
               {std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::infinity(), 0.1}}});
    for (std::size_t const length : {1U, 1U, 1U, 1U, 1U, 60000U})
        flt.addRaw(comment, std::string(length, 'c') + '\0');
    flt.push().add("Object", {{"idASCII", "caf\xe9"}}).push();
    for (int face = 0; face < 200; ++face)
        flt.add("Face",
                {{"idField", "f" + std::to_string(face)}, {"colorNameIndex", face}, {"flags", face << 24}});
    flt.pop();
    flt.add("Switch", {{"numberOfMasks", 2}, {"numberOf32BitWordsPerMask", 1}, {"masks", {1, 2}}});
    flt.add("Switch", {{"numberOfMasks", 0}, {"numberOf32BitWordsPerMask", 1}});
    flt.add("Switch", {{"numberOfMasks", 3}, {"numberOf32BitWordsPerMask", 1}, {"masks", {4, 5, 6}}});
    flt.add("Matrix").add("Matrix", {{"matrix", {0, 1}}});
    return flt.pop();
}

/// A count below zero.
FltWriter broken()
{
    FltWriter flt;
    return flt.add("Switch", {{"numberOfMasks", -1}, {"numberOf32BitWordsPerMask", 1}}).add("Group");
}

} // namespace

int main(int /*count*/, char** arguments)
{
    std::string const folder = std::string(arguments[1]) + '/';
    std::filesystem::create_directories(folder);
    for (int const revision : {11, 1420, 1500, 1570, 1580})
        everyRecord(revision).save(folder + "every-" + std::to_string(revision) + ".flt");
    columns().save(folder + "columns.flt");
    broken().save(folder + "broken.flt");
    return 0;
}
