#include "support/SceneMeasure.h"

#include "support/FreedMemory.h"
#include "support/SceneNodes.h"

#include "loader/FltScene.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/fields/SoMFFloat.h>
#include <Inventor/fields/SoMFNode.h>
#include <Inventor/fields/SoMFVec2f.h>
#include <Inventor/fields/SoMFVec3f.h>
#include <Inventor/fields/SoSFImage.h>
#include <Inventor/lists/SoFieldList.h>
#include <Inventor/nodes/SoSeparator.h>

namespace
{

/// Bytes of a node itself with its fields' frames, on average.
constexpr std::uint64_t bytesOfNode = 200;

std::uint64_t bytesOf(SoField const& field)
{
    if (field.isOfType(SoSFImage::getClassTypeId())) {
        SbVec2s size;
        int components = 0;
        static_cast<void>(static_cast<SoSFImage const&>(field).getValue(size, components));
        return static_cast<std::uint64_t>(size[0]) * static_cast<std::uint64_t>(size[1]) *
               static_cast<std::uint64_t>(components);
    }
    if (!field.isOfType(SoMField::getClassTypeId()))
        return 0;
    std::uint64_t const size = field.isOfType(SoMFVec3f::getClassTypeId())   ? 12
                               : field.isOfType(SoMFVec2f::getClassTypeId()) ? 8
                                                                             : 4;
    return static_cast<std::uint64_t>(static_cast<SoMField const&>(field).getNum()) * size;
}

} // namespace

void SceneMeasure::add(SoNode& node)
{
    SoFieldList fields;
    node.getFields(fields);
    statistics.add(node);
    bytes += bytesOfNode;
    for (int i = 0; i < fields.getLength(); ++i)
        bytes += bytesOf(*fields[i]);
}

SceneMeasure SceneMeasure::of(FltScene scene, std::string const& database)
{
    SceneMeasure measure;
    SceneNodes::forEach(scene.root(), [&measure](SoNode& node) { measure.add(node); });
    SoGetBoundingBoxAction action{SbViewportRegion(100, 100)};
    action.apply(scene.root());
    SbBox3f const box = action.getBoundingBox();
    measure.isEmpty = box.isEmpty();
    for (int axis = 0; axis < 3 && !measure.isEmpty; ++axis) {
        measure.least[static_cast<std::size_t>(axis)] = static_cast<double>(box.getMin()[axis]);
        measure.most[static_cast<std::size_t>(axis)] = static_cast<double>(box.getMax()[axis]);
    }

    std::vector<FltReference> const references = scene.references();
    scene = {};
    FreedMemory::giveBack();
    measure.statistics.faces = SceneStatistics::facesOf(references, database);
    return measure;
}
