#include "loader/FltLoader.h"
#include "robustness/StructuralDatabase.h"
#include "support/DrawnScene.h"
#include "support/ScratchFolder.h"
#include "visual/FltMeshIndices.h"
#include "visual/FltVisualWalk.h"

#include <Inventor/SoPath.h>
#include <Inventor/VRMLnodes/SoVRMLBillboard.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/lists/SoPathList.h>
#include <Inventor/nodes/SoAsciiText.h>
#include <Inventor/nodes/SoSeparator.h>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace
{

constexpr unsigned some = 300;

using Points = std::vector<SbVec3d>;

SbVec3d inDoubles(SbVec3f const& point)
{
    return {static_cast<double>(point[0]), static_cast<double>(point[1]), static_cast<double>(point[2])};
}

void add(FltVisualWalk const& walk, std::vector<std::uint32_t> const& corners, Points& points)
{
    for (std::uint32_t const corner : corners) {
        SbVec3d world;
        walk.matrix().multVecMatrix(walk.mesh().origin + inDoubles(walk.mesh().positions[corner]), world);
        points.push_back(world);
    }
}

Points pointsOf(std::vector<DrawnScene::Primitive> const& primitives)
{
    Points points;
    for (DrawnScene::Primitive const& each : primitives)
        for (SbVec3f const& point : each.points)
            points.push_back(inDoubles(point));
    return points;
}

double largestOf(Points const& points)
{
    double largest = 1;
    for (SbVec3d const& point : points)
        for (int i = 0; i < 3; ++i)
            if (std::isfinite(point[i]))
                largest = std::max(largest, std::abs(point[i]));
    return largest;
}

constexpr char turning[] = "turning";

bool isTurned(DrawnScene::Primitive const& primitive)
{
    return std::find(primitive.names.begin(), primitive.names.end(), turning) != primitive.names.end();
}

/// How many points differ by more than the toolkit's floats make of them. It turns some faces by itself.
std::size_t differences(Points const& walked, std::vector<DrawnScene::Primitive> const& primitives)
{
    Points const drawn = pointsOf(primitives);
    double const tolerance = 1e-4 * std::max(largestOf(walked), largestOf(drawn));
    std::size_t const each = drawn.size() / std::max<std::size_t>(primitives.size(), 1);
    std::size_t count = 0;
    for (std::size_t i = 0; i < drawn.size(); ++i)
        if (!isTurned(primitives[i / each]) && std::isfinite((walked[i] - drawn[i]).length()) &&
            !walked[i].equals(drawn[i], tolerance * tolerance))
            ++count;
    return count;
}

SoPathList& search(SoSearchAction& action, SoType type, SoNode* root)
{
    action.setType(type);
    action.setInterest(SoSearchAction::ALL);
    action.setSearchingAll(TRUE);
    action.apply(root);
    return action.getPaths();
}

void nameTurningFaces(SoNode* root)
{
    SoSearchAction action;
    SoPathList const& faces = search(action, SoVRMLBillboard::getClassTypeId(), root);
    for (int i = 0; i < faces.getLength(); ++i)
        faces[i]->getTail()->setName(turning);
}

/// The toolkit draws text by triangles, too.
void emptyTexts(SoNode* root)
{
    SoSearchAction action;
    SoPathList const& texts = search(action, SoAsciiText::getClassTypeId(), root);
    for (int i = 0; i < texts.getLength(); ++i)
        static_cast<SoAsciiText*>(texts[i]->getTail())->string = "";
}

} // namespace

TEST(StructuralWalkTest, MeetsWhatTheToolkitDrawsInItsOrder)
{
    ScratchFolder const folder;
    FltLoader loader;
    loader.levelsOfDetail = FltLoader::LevelsOfDetail::highest;
    std::size_t compared = 0;
    std::size_t different = 0;
    for (unsigned number = 0; number < some; ++number) {
        std::string const path = StructuralDatabase(number).save(folder / "");
        FltVisual visual;
        try {
            visual = loader.loadVisual(path);
        } catch (FltLoadError const&) {
            continue; // too damaged
        }
        FltScene const scene = FltLoader::makeScene(visual);
        emptyTexts(scene.root());
        nameTurningFaces(scene.root());
        DrawnScene const drawn(scene.root());
        Points triangles;
        Points lines;
        for (FltVisualWalk walk(visual.root); walk.next();) {
            add(walk, FltMeshIndices::triangles(walk.mesh()), triangles);
            add(walk, FltMeshIndices::lines(walk.mesh()), lines);
        }
        ASSERT_EQ(triangles.size(), 3 * drawn.triangles.size()) << number;
        ASSERT_EQ(lines.size(), 2 * drawn.lines.size()) << number;
        compared += triangles.size() + lines.size();
        different += differences(triangles, drawn.triangles) + differences(lines, drawn.lines);
    }
    EXPECT_GT(compared, 20000U);
    // Numbers of 1e9 that cancel each other leave the toolkit's floats far off in a few places.
    EXPECT_LT(100 * different, compared);
}
