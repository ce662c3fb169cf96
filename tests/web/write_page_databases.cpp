// Writes the databases that the tests of the page show, each as NAME/model.flt below the given folder: those
// of the pictures, and some of their own.

#include "SmallTriangles.h"
#include "pictures/PictureDatabases.h"

#include <cstdio>
#include <exception>
#include <filesystem>

namespace
{

using Folder = std::filesystem::path;

constexpr int unlit = 0;

/// Names that would be markup.
void writeMarkup(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> const panel = stage.panel(-1);
    stage.begin()
        .add("Group")
        .add("LongID", {{"idASCII", "</script><script>document.title='owned'</script>"}})
        .push();
    stage.flt.add("Object")
        .add("LongID", {{"idASCII", "<img src=x onerror=\"document.title='owned'\">&amp;"}})
        .push();
    stage.flt.face(panel, stage.face(stage.red)).pop().pop();
    stage.flt.save(folder / "model.flt");
}

/// A ground of a hundred metres with a marking on it; nothing is lit.
void writeMarkings(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> const ground =
        stage.vertices({{-50, -50, 0}, {50, -50, 0}, {50, 50, 0}, {-50, 50, 0}});
    std::vector<double> const marking =
        stage.vertices({{-10, -45, 0}, {10, -45, 0}, {10, 45, 0}, {-10, 45, 0}});
    stage.flt.push().add("Object").push();
    stage.flt.face(ground, stage.face({255, 255, 0, 0}, {{"lightMode", unlit}})).add("PushSubface");
    stage.flt.face(marking, stage.face({255, 0, 0, 255}, {{"lightMode", unlit}})).add("PopSubface");
    stage.flt.pop();
    stage.flt.save(folder / "model.flt");
}

/// Panels of many colours; nothing is lit.
void writeUnlit(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<std::vector<double>> const panels = {stage.panel(-5), stage.panel(-2.5), stage.panel(0),
                                                     stage.panel(2.5)};
    std::vector<std::vector<double>> const colors = {
        {255, 20, 40, 230}, {255, 60, 170, 50}, {255, 128, 128, 128}, {255, 200, 60, 30}};
    stage.flt.push();
    for (std::size_t i = 0; i < panels.size(); ++i)
        stage.object(panels[i], stage.face(colors[i], {{"lightMode", unlit}}));
    stage.flt.save(folder / "model.flt");
}

/// A door that turns, and a sign with two sides of which a switch shows one.
void writeMoving(ScratchFolder const& folder)
{
    PictureStage stage;
    std::vector<double> const door = stage.panel(-3), stop = stage.panel(1), go = stage.panel(3.5);
    stage.begin().add("DOF", {{"idASCII", "door"},
                              {"XOriginOfDOFLocalCoordinateSystem", -3},
                              {"XPointOnXAxisOfDOFLocalCoordinateSystem", -2},
                              {"XPointInXYPlaneOfDOFLocalCoordinateSystem", -3},
                              {"YPointInXYPlaneOfDOFLocalCoordinateSystem", 1},
                              {"minimumYaw", -90},
                              {"maxYaw", 90},
                              {"incrementInYaw", 5}});
    stage.flt.push();
    stage.object(door, stage.face(stage.blue), {{"idASCII", "leaf"}});
    stage.flt.pop().add(
        "Switch",
        {{"idASCII", "sign"}, {"numberOfMasks", 2}, {"numberOf32BitWordsPerMask", 1}, {"masks", {1, 2}}});
    stage.flt.push();
    stage.object(stop, stage.face(stage.red), {{"idASCII", "stop"}});
    stage.object(go, stage.face(stage.green), {{"idASCII", "go"}});
    stage.flt.pop();
    stage.flt.save(folder / "model.flt");
}

std::vector<PictureDatabase> ownDatabases()
{
    return {{"markup", "", writeMarkup},
            {"markings", "", writeMarkings},
            {"unlit", "", writeUnlit},
            {"moving", "", writeMoving}};
}

void writeAll(std::vector<PictureDatabase> const& databases, Folder const& out)
{
    constexpr auto over =
        std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing;
    for (PictureDatabase const& database : databases) {
        ScratchFolder const folder;
        database.write(folder);
        std::filesystem::copy(Folder(folder / "model.flt").parent_path(), out / database.name, over);
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: write_page_databases FOLDER\n", stderr);
        return 2;
    }
    try {
        std::filesystem::create_directories(argv[1]);
        writeAll(pictureDatabases(), argv[1]);
        writeAll(ownDatabases(), argv[1]);
        writeAll(smallTriangles(), argv[1]);
    } catch (std::exception const& problem) {
        std::fprintf(stderr, "write_page_databases: %s\n", problem.what());
        return 1;
    }
    return 0;
}
