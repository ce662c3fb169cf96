#include "view/VisualPart.h"

#include "LoadedViewDatabase.h"

#include <algorithm>

namespace
{

class VisualPartTest : public LoadedViewDatabase
{
protected:
    std::optional<FltVisual> partOf(char const* name)
    {
        return VisualPart::of(FltLoader().loadVisual(path), place(name));
    }

    static std::vector<std::string> namesIn(FltVisualNode const& node)
    {
        std::vector<std::string> names;
        if (!node.name.empty())
            names.push_back(node.name);
        for (auto const& child : node.children)
            if (child != nullptr)
                for (std::string const& name : namesIn(*child))
                    names.push_back(name);
        return names;
    }

    static bool hasName(FltVisual const& visual, char const* name)
    {
        std::vector<std::string> const names = namesIn(*visual.root);
        return std::find(names.begin(), names.end(), name) != names.end();
    }
};

TEST_F(VisualPartTest, HoldsThePartWithWhatStandsAboveAndBelowIt)
{
    std::optional<FltVisual> const floor = partOf("floor");
    ASSERT_TRUE(floor);
    EXPECT_TRUE(hasName(*floor, "base"));
    EXPECT_TRUE(hasName(*floor, "floor"));
    EXPECT_FALSE(hasName(*floor, "door"));
    std::optional<FltVisual> const door = partOf("door");
    ASSERT_TRUE(door);
    EXPECT_TRUE(hasName(*door, "panel"));
}

TEST_F(VisualPartTest, IsWhereItWas)
{
    std::optional<FltVisual> const panel = partOf("panel");
    ASSERT_TRUE(panel);
    FltVisualNode const* node = panel->root.get();
    while (node->as<FltVisualJoint>() == nullptr) {
        ASSERT_EQ(1U, node->children.size());
        node = node->children[0].get();
    }
    EXPECT_EQ("door", node->name);
}

TEST_F(VisualPartTest, IsShownWhateverASwitchOrALevelOfDetailAboveItChooses)
{
    for (char const* name : {"green", "hut"}) {
        std::optional<FltVisual> const part = partOf(name);
        ASSERT_TRUE(part) << name;
        for (FltVisualNode const* node = part->root.get(); node->name != name;
             node = node->children[0].get()) {
            EXPECT_EQ(nullptr, node->as<FltVisualSwitch>());
            EXPECT_EQ(nullptr, node->as<FltVisualLevels>());
            ASSERT_EQ(1U, node->children.size());
        }
        EXPECT_FALSE(hasName(*part, "red"));
    }
}

TEST_F(VisualPartTest, OfTheHeaderIsTheWhole)
{
    FltVisual const whole = FltLoader().loadVisual(path);
    std::optional<FltVisual> const part = VisualPart::of(whole, {path, 0, true});
    ASSERT_TRUE(part);
    EXPECT_EQ(whole.root, part->root);
}

TEST_F(VisualPartTest, IsNoneForWhatNothingComesFrom)
{
    FltVisual const whole = FltLoader().loadVisual(path);
    EXPECT_FALSE(VisualPart::of(whole, {path, 1, true}));
    EXPECT_FALSE(VisualPart::of(whole, {"elsewhere.flt", 0, true}));
}

TEST_F(VisualPartTest, IsFoundThoughItIsHidden)
{
    FltWriter flt(1570);
    flt.vertexPalette();
    std::vector<double> corners;
    for (auto const& [x, z] : {std::pair{0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0}})
        corners.push_back(flt.vertex("VertexColor", x, 0, z));
    flt.push().add("Object", {{"idASCII", "lantern"}, {"flags", 0x80000000}}); // not by day
    std::size_t const offset = flt.lastOffset();
    flt.push().face(corners).pop().pop();
    std::string const file = folder.path("hidden.flt");
    flt.save(file);
    std::optional<FltVisual> const part = VisualPart::of(FltLoader().loadVisual(file), {file, offset, true});
    ASSERT_TRUE(part);
    FltVisualNode const* node = part->root.get();
    for (; node->name != "lantern"; node = node->children[0].get())
        EXPECT_FALSE(node->isHidden);
    EXPECT_FALSE(node->isHidden);
}

} // namespace
