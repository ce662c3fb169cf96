// What "./dev bench --check" counts besides instructions: see check_budgets.py.
//
// "counted_results FOLDER" makes databases, and prints a line for each count: "count" or "peak", the number,
// and what it is of. A count is the same on every machine; a peak is the largest memory of a process, in
// bytes.

#include "BenchDatabase.h"
#include "BenchTime.h"
#include "NodeCount.h"
#include "inspect/FltCheck.h"
#include "loader/FltLoader.h"

#include <Inventor/SoDB.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShape.h>
#include <cstdio>
#include <exception>
#include <string>

namespace
{

constexpr int buildings = 200;
constexpr int vertices = 300'000;
constexpr int objects = 20'000;

/// What is gone through to draw a database.
void tellDrawing(std::string const& path, std::string const& name)
{
    for (bool const isMerged : {false, true}) {
        FltLoader loader;
        loader.merge = isMerged;
        FltScene const scene = loader.load(path);
        char const* const how = isMerged ? ", merged" : "";
        std::printf("count %d %s%s: nodes\n", NodeCount::of(SoNode::getClassTypeId(), scene.root()),
                    name.c_str(), how);
        std::printf("count %d %s%s: shapes\n", NodeCount::of(SoShape::getClassTypeId(), scene.root()),
                    name.c_str(), how);
    }
}

void check(std::string const& path)
{
    FltInventory const inventory(path);
    FltCheck check(inventory);
    check.checkRecords();
    check.checkGeometry();
    check.checkHierarchy();
    check.checkVisibility();
}

template <class Work>
void tellPeak(std::string const& name, Work work)
{
    BenchTime const time = BenchTime::apart(1, [&] {
        Silence const silence;
        work();
    });
    std::printf("peak %.0f %s\n", time.peakMemory, name.c_str());
}

void tellAll(std::string const& folder)
{
    std::string const town = folder + "/town.flt", terrain = folder + "/terrain.flt",
                      single = folder + "/objects.flt", old = folder + "/old.flt",
                      meshes = folder + "/meshes.flt";
    BenchDatabase::writeTown(town, buildings, BenchDatabase::Windows::opaque);
    BenchDatabase::writeTerrain(terrain, vertices, BenchDatabase::Vertices::shared);
    BenchDatabase::writeObjects(single, objects, BenchDatabase::Names::distinct);
    BenchDatabase::writeTerrain(old, vertices, BenchDatabase::Vertices::old);
    BenchDatabase::writeMeshes(meshes, vertices);
    tellPeak("terrain, checked", [&] { check(terrain); });
    tellPeak("terrain, inventory", [&] { FltInventory const inventory(terrain); });
    tellPeak("terrain, visual", [&] { FltLoader().loadVisual(terrain); });
    tellPeak("terrain, scene", [&] { FltLoader().load(terrain); });
    tellPeak("old vertices, checked", [&] { check(old); });
    tellPeak("meshes, checked", [&] { check(meshes); });
    tellPeak("meshes, scene", [&] { FltLoader().load(meshes); });
    tellPeak("objects, scene", [&] { FltLoader().load(single); });
    SoDB::init();
    SoDebugError::setHandlerCallback([](SoError const*, void*) {}, nullptr);
    tellDrawing(town, "town");
    tellDrawing(terrain, "terrain");
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("Usage: counted_results FOLDER\n", stderr);
        return 2;
    }
    try {
        tellAll(argv[1]);
    } catch (std::exception const& problem) {
        std::fprintf(stderr, "counted_results: %s\n", problem.what());
        return 1;
    }
}
