// Writes the databases that the test of the window clicks through.

#include "ViewDatabase.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <string_view>

namespace
{

/// A flip-book of two frames, and the Object lantern, which is hidden by day.
FltWriter playedDatabase()
{
    FltWriter flt(1570);
    flt.vertexPalette();
    std::vector<double> corners;
    for (auto const& [x, z] : {std::pair{0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0}, {0.0, 1.0}})
        corners.push_back(flt.vertex("VertexColor", x, 0, z));
    flt.push();
    flt.add("Group", {{"idASCII", "flame"}, {"flags", 0x40000000}}).push();
    for (char const* const name : {"low", "high"})
        flt.add("Object", {{"idASCII", name}}).push().face(corners).pop();
    flt.pop();
    flt.add("Object", {{"idASCII", "lantern"}, {"flags", 0x80000000}}).push().face(corners).pop();
    flt.pop();
    return flt;
}

/// Nothing to be seen.
FltWriter emptyDatabase()
{
    FltWriter flt(1570);
    flt.push().pop();
    return flt;
}

/// Many Objects in groups, which take a while to load.
FltWriter largeDatabase()
{
    constexpr int groups = 800;
    constexpr int objectsOfGroup = 400;
    FltWriter flt(1570);
    flt.vertexPalette();
    std::vector<double> corners;
    for (auto const& [x, z] : {std::pair{0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0}})
        corners.push_back(flt.vertex("VertexColor", x, 0, z));
    flt.push();
    for (int group = 0; group < groups; ++group) {
        flt.add("Group", {{"idASCII", "g" + std::to_string(group)}}).push();
        for (int object = 0; object < objectsOfGroup; ++object)
            flt.add("Object", {{"idASCII", "o" + std::to_string(object)}}).push().face(corners).pop();
        flt.pop();
    }
    flt.pop();
    return flt;
}

struct Kind {
    std::string_view name;
    FltWriter (*make)();
};

constexpr Kind kinds[] = {
    {"yard", viewDatabase}, {"played", playedDatabase}, {"empty", emptyDatabase}, {"large", largeDatabase}};

} // namespace

int main(int argc, char** argv)
{
    std::string_view const name = argc == 3 ? argv[2] : kinds[0].name;
    auto const* const kind =
        std::find_if(std::begin(kinds), std::end(kinds), [&](Kind const& each) { return each.name == name; });
    if (argc < 2 || argc > 3 || kind == std::end(kinds)) {
        std::fputs("usage: write_view_database OUT.flt [yard|played|empty|large]\n", stderr);
        return 2;
    }
    kind->make().save(argv[1]);
    return 0;
}
