#include "globe/FltGlobe.h"

#include "globe/FltGlobeMap.h"
#include "globe/FltGlobeNodes.h"
#include "loader/FltProjection.h"
#include "visual/FltVisualBounds.h"
#include "visual/FltVisualWalk.h"

#include <utility>

namespace
{

constexpr int wgs84 = 0;

void addOmission(FltVisual& visual, char const* kind, std::uint64_t count)
{
    if (count != 0)
        visual.omissions.push_back({kind, count});
}

/// Has places count from the middle of what is to be seen, or, where something astray makes that no place on
/// the earth, from the first corner that has one.
bool moveToMiddle(FltVisual const& visual, FltGlobeMap& map)
{
    SbBox3d const box = visual.root != nullptr ? FltVisualBounds().boxOf(*visual.root) : SbBox3d();
    if (map.moveTo(box.isEmpty() ? -SbVec3d(visual.info.offset) : box.getCenter()))
        return true;
    FltVisualWalk walk(visual.root);
    while (walk.next())
        for (SbVec3f const& position : walk.mesh().positions) {
            SbVec3d point = walk.mesh().origin + SbVec3d(position);
            walk.matrix().multVecMatrix(point, point);
            if (map.moveTo(point))
                return true;
        }
    return false;
}

/// What a visual tells besides what it looks like.
FltVisual frameOf(FltVisual const& from)
{
    FltVisual visual;
    static_cast<FltLoadReport&>(visual) = from;
    visual.files = from.files;
    for (double& offset : visual.info.offset)
        offset = 0;
    return visual;
}

} // namespace

FltGlobeTile FltGlobe::place(FltVisual const& visual)
{
    FltProjection const projection(visual.info);
    if (!projection.isKnown())
        throw FltGlobeError(projection.describe());
    FltGlobeMap map(visual, projection);
    if (!moveToMiddle(visual, map))
        throw FltGlobeError("nothing in it is a place of " + projection.describe());
    FltGlobeNodes nodes(map);
    FltVisual placed = frameOf(visual);
    placed.root = nodes.placed(std::const_pointer_cast<FltVisualNode>(visual.root));
    addOmission(placed, "corners that have no place on the earth", nodes.lostCorners());
    addOmission(placed, "parts that have no place on the earth", nodes.lostParts());
    addOmission(placed, "parts that stand too deep", nodes.tooDeep());
    std::vector<std::string> remarks;
    if (visual.info.ellipsoid != wgs84)
        remarks.push_back("The database's latitudes and longitudes (" + projection.describe() +
                          ") are taken as those on WGS 1984, without a shift of the datum.");
    return {std::move(placed), map.frame(), projection.describe(), std::move(remarks)};
}
