// Writes the databases that the test of the window clicks through.

#include "ViewDatabase.h"

#include <cstdio>
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

} // namespace

int main(int argc, char** argv)
{
    bool const isPlayed = argc == 3 && std::string_view(argv[2]) == "played";
    if (argc != 2 && !isPlayed) {
        std::fputs("usage: write_view_database OUT.flt [played]\n", stderr);
        return 2;
    }
    (isPlayed ? playedDatabase() : viewDatabase()).save(argv[1]);
    return 0;
}
