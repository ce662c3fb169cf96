#include "support/SceneStatistics.h"

#include "support/SceneNodes.h"

#include "loader/FltRecordReader.h"
#include "loader/FltScene.h"
#include "records/FltOpcode.h"

#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoSeparator.h>
#include <filesystem>
#include <set>
#include <system_error>

namespace
{

std::uint64_t trianglesOf(int corners)
{
    return corners < 3 ? 0 : static_cast<std::uint64_t>(corners) - 2;
}

std::uint64_t trianglesIn(SoIndexedFaceSet const& shape)
{
    std::int32_t const* const values = shape.coordIndex.getValues(0);
    std::uint64_t count = 0;
    int corners = 0;
    for (int i = 0; i < shape.coordIndex.getNum(); ++i) {
        ++corners;
        if (values[i] < 0) {
            count += trianglesOf(corners - 1);
            corners = 0;
        }
    }
    return count + trianglesOf(corners);
}

std::uint64_t trianglesIn(SoFaceSet const& shape)
{
    std::uint64_t count = 0;
    for (int i = 0; i < shape.numVertices.getNum(); ++i)
        count += trianglesOf(shape.numVertices[i]);
    return count;
}

/// The face records of a file that was loaded. One that is gone by now has none.
std::uint64_t facesIn(std::string const& file)
{
    std::uint64_t count = 0;
    try {
        for (FltRecordReader reader(file); reader.next();)
            count += reader.opcode() == FltOpcode::face ? 1 : 0;
    } catch (FltLoadError const&) {
        return 0;
    }
    return count;
}

} // namespace

void SceneStatistics::add(SoNode const& node)
{
    ++nodes;
    if (!node.isOfType(SoShape::getClassTypeId()))
        return;
    ++shapes;
    if (node.isOfType(SoIndexedFaceSet::getClassTypeId()))
        triangles += trianglesIn(static_cast<SoIndexedFaceSet const&>(node));
    else if (node.isOfType(SoFaceSet::getClassTypeId()))
        triangles += trianglesIn(static_cast<SoFaceSet const&>(node));
}

std::uint64_t SceneStatistics::facesOf(std::vector<FltReference> const& references,
                                       std::string const& database)
{
    std::uint64_t faces = 0;
    std::set<std::filesystem::path> files;
    auto const add = [&](std::string const& file) {
        std::error_code ignored;
        if (files.insert(std::filesystem::weakly_canonical(file, ignored)).second)
            faces += facesIn(file);
    };
    add(database);
    for (FltReference const& reference : references)
        if (reference.isLoaded)
            add(reference.path);
    return faces;
}

SceneStatistics SceneStatistics::of(FltScene const& scene, std::string const& database)
{
    SceneStatistics statistics;
    SceneNodes::forEach(scene.root(), [&statistics](SoNode const& node) { statistics.add(node); });
    statistics.faces = facesOf(scene.references(), database);
    return statistics;
}
