#include "visual/FltPlaneOrder.h"

#include "support/CompleteDatabase.h"

#include <cmath>
#include <gtest/gtest.h>
#include <map>

namespace
{

using Fields = FltWriter::Fields;

/// The level of the faces of each colour, all nodes included.
void collectLevels(FltVisualNode const& node, std::map<std::uint32_t, int>& levels)
{
    for (FltMesh const& mesh : node.meshes)
        for (std::uint32_t const color : mesh.colors)
            levels[color] = mesh.level;
    for (std::shared_ptr<FltVisualNode> const& child : node.children)
        collectLevels(*child, levels);
}

/// Writes faces that know their colour: 0, 1, 2 and so on.
class FltPlaneOrderTest : public testing::Test
{
protected:
    CompleteDatabase database;
    FltWriter& writer = database.writer;
    std::vector<double> const flat = database.square();
    std::vector<double> const beside = database.square(5, 5);
    std::vector<double> const above = database.square(0, 0, 0.5);

    Fields face(int priority)
    {
        int const color = next++;
        return CompleteDatabase::face({{"relativePriority", priority}},
                                      {255, double(color % 256), std::floor(color / 256.0), 0});
    }

    void addFace(int priority, std::vector<double> const& corners)
    {
        writer.add("Face", face(priority)).push().add("VertexList", {{"offsets", corners}}).pop();
    }

    FltWriter& addObject(int priority)
    {
        return writer.add("Object", {{"relativePriority", priority}}).push();
    }

    /// The levels of the faces, in their order.
    std::vector<int> levels()
    {
        std::map<std::uint32_t, int> found;
        collectLevels(*database.see().root, found);
        std::vector<int> levels;
        for (auto const& [color, level] : found)
            levels.push_back(level);
        return levels;
    }

    int next = 0;
};

using Levels = std::vector<int>;

} // namespace

TEST_F(FltPlaneOrderTest, putsFacesWithAHigherPriorityOnTopOfOthersInTheirPlane)
{
    database.begin();
    addObject(0);
    addFace(5, flat);
    addFace(-3, beside);
    addFace(5, beside);
    addFace(0, flat);
    EXPECT_EQ(levels(), (Levels{2, 0, 2, 1}));
}

TEST_F(FltPlaneOrderTest, ordersTrianglesAndWhatLiesInTheirPlane)
{
    std::vector<double> const triangle = database.polygon({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}});
    database.begin();
    addObject(0);
    addFace(1, triangle);
    addFace(0, flat);
    addFace(2, triangle);
    EXPECT_EQ(levels(), (Levels{1, 0, 2}));
}

TEST_F(FltPlaneOrderTest, leavesFacesOfOtherPlanesAlone)
{
    database.begin();
    addObject(0);
    addFace(0, flat);
    addFace(9, above);
    EXPECT_EQ(levels(), (Levels{0, 0}));
}

TEST_F(FltPlaneOrderTest, leavesFacesOfOnePriorityAlone)
{
    database.begin();
    addObject(0);
    addFace(7, flat);
    addFace(7, flat);
    writer.pop();
    addObject(0);
    addFace(3, flat);
    EXPECT_EQ(levels(), (Levels{0, 0, 0}));
}

TEST_F(FltPlaneOrderTest, ordersObjectsAndGroups)
{
    database.begin();
    addObject(1);
    addFace(0, flat);
    writer.pop();
    addObject(0);
    addFace(0, flat);
    addFace(0, above);
    writer.pop().add("Group", {{"relativePriority", 2}}).push();
    addObject(0);
    addFace(0, flat);
    addFace(0, above);
    EXPECT_EQ(levels(), (Levels{1, 0, 0, 2, 1}));
}

TEST_F(FltPlaneOrderTest, putsAnObjectAboveAllThatLieInAnother)
{
    database.begin();
    addObject(1);
    addFace(0, flat);
    writer.pop();
    addObject(0);
    addFace(0, flat);
    addFace(1, flat);
    addFace(2, flat);
    EXPECT_EQ(levels(), (Levels{3, 0, 1, 2}));
}

TEST_F(FltPlaneOrderTest, putsAFaceAboveTheSubfacesOfAnother)
{
    database.begin();
    addObject(0);
    addFace(0, flat);
    writer.add("PushSubface");
    addFace(0, flat);
    addFace(1, flat);
    writer.add("PopSubface");
    addFace(1, flat);
    EXPECT_EQ(levels(), (Levels{0, 1, 2, 3}));
}

TEST_F(FltPlaneOrderTest, comparesPlanesAsTheyStandInTheFile)
{
    database.begin();
    std::vector<double> const down = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, -0.5, 1};
    writer.add("Object", {{"relativePriority", 1}}).add("GeneralMatrix", {{"matrix", down}}).push();
    addFace(0, above);
    addFace(0, flat);
    writer.pop();
    addObject(0);
    addFace(0, flat);
    EXPECT_EQ(levels(), (Levels{1, 0, 0}));
}

TEST_F(FltPlaneOrderTest, ordersFacesOfOldRevisions)
{
    CompleteDatabase old(13);
    old.begin().add("Object").push();
    for (int const priority : {4, 2}) {
        old.writer.add("Face", {{"relativePriority", priority},
                                {"texturePatternIndex", -1},
                                {"materialIndex", -1},
                                {"detailTexturePatternIndex", -1}});
        old.writer.push();
        for (auto const& [x, y] : {std::pair(0, 0), {1, 0}, {1, 1}})
            old.writer.add("OldVertex", {{"Xcoordinate", x}, {"Ycoordinate", y}});
        old.writer.pop();
    }
    std::shared_ptr<FltVisualNode> const root = old.see().root;
    std::vector<int> found;
    for (FltMesh const& mesh : root->children.at(0)->meshes)
        found.push_back(mesh.level);
    EXPECT_EQ(found, (Levels{1, 0}));
}

/// Each order inside another one looks at all faces below it once more.
TEST_F(FltPlaneOrderTest, endsOrdersThatAreNestedWithoutEnd)
{
    database.begin();
    constexpr int depth = 100;
    for (int i = 0; i < depth; ++i) {
        writer.add("Group", {{"relativePriority", 1}});
        writer.add("Group").push();
    }
    addObject(0);
    for (int i = 0; i < 500; ++i)
        addFace(i % 2, flat);
    EXPECT_EQ(levels().size(), 500U);
    EXPECT_NE(database.messages.find("Too many priorities are nested"), std::string::npos);
}
