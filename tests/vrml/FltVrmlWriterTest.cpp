#include "vrml/FltVrmlWriter.h"

#include "support/MadeNodes.h"
#include "support/MemoryStream.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <limits>

namespace
{

using namespace MadeNodes;

SbMatrix moved(float x, float y, float z)
{
    SbMatrix matrix;
    matrix.setTranslate(SbVec3f(x, y, z));
    return matrix;
}

SbMatrix scaled(float x, float y, float z)
{
    SbMatrix matrix;
    matrix.setScale(SbVec3f(x, y, z));
    return matrix;
}

FltMesh triangle()
{
    FltMesh mesh;
    mesh.positions = {{0, 0, 0}, {1, 0, 0}, {0, 0, 1}};
    mesh.indices = {0, 1, 2, FltMesh::end};
    mesh.colors = {~0U};
    return mesh;
}

std::shared_ptr<FltVisualNode> withTriangle(std::string const& name = "")
{
    auto const made = named(name);
    made->meshes = {triangle()};
    return made;
}

/// The file of parts below a root, and what it has no form for.
struct Written {
    explicit Written(std::vector<std::shared_ptr<FltVisualNode>> parts,
                     FltVrmlWriter::AddressOf const& addressOf = {})
    {
        auto const root = node();
        root->children = std::move(parts);
        FltVrmlWriter writer(root, {});
        MemoryStream const stream;
        writer.write(stream, addressOf);
        text = stream.text();
        EXPECT_EQ(countOf("{"), countOf("}"));
        EXPECT_EQ(countOf("["), countOf("]"));
        for (FltOmission const& omission : writer.omissions())
            lost.push_back(omission.kind + ' ' + std::to_string(omission.count));
    }

    bool holds(std::vector<std::string> const& parts) const
    {
        std::size_t at = 0;
        for (std::string const& part : parts)
            if ((at = text.find(part, at)) == std::string::npos)
                return false;
        return true;
    }

    std::size_t countOf(std::string const& part) const
    {
        std::size_t count = 0;
        for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
            ++count;
        return count;
    }

    std::string text;
    std::vector<std::string> lost;
};

} // namespace

TEST(FltVrmlWriter, keepsTheEmptyLinesOfComments)
{
    auto const group = named("house");
    for (auto const& [comment, lines] :
         {std::pair("roof\n\nred\n", "\"roof\"\n\"\"\n\"red\"\n\"\"\n"), std::pair("", "\"\"\n")}) {
        group->comments = {comment};
        std::string text = Written({group}).text;
        text.erase(std::remove(text.begin(), text.end(), ' '), text.end());
        EXPECT_NE(text.find(std::string("info[\n") + lines + "]"), std::string::npos) << text;
    }
}

TEST(FltVrmlWriter, writesGroupsWithNamesCommentsAndTransformations)
{
    auto const group = named("house+1");
    group->comments = {"some\nmore\nlines"};
    group->transform = {moved(1, 2, 3), scaled(2, 2, 2)};
    group->children = {named("below")};
    EXPECT_EQ(Written({group}).text, R"(#VRML V2.0 utf8
DEF root Group {
 children [
  DEF house_1 Transform {
   translation 1 2 3
   scale 2 2 2
   children [
    WorldInfo {
     info [
      "some"
      "more"
      "lines"
     ]
    }
    DEF below Group {
     children [
     ]
    }
   ]
  }
 ]
}
)");
}

TEST(FltVrmlWriter, writesASharedPartOnce)
{
    auto const shared = withTriangle();
    Written const file({shared, node(), shared});
    EXPECT_EQ(file.countOf("IndexedFaceSet"), 1U);
    EXPECT_TRUE(file.holds({"DEF part Group {", "Shape {", "Group {\n   children USE part\n  }"}))
        << file.text;
}

TEST(FltVrmlWriter, writesAPartOnceThatNothingButItsTwoPlacesHold)
{
    using Parts = std::vector<std::shared_ptr<FltVisualNode>>;
    auto const twice = [] { return Parts(2, withTriangle()); };
    EXPECT_EQ(Written(twice()).countOf("IndexedFaceSet"), 1U);
    auto const choice = node();
    choice->become<FltVisualSwitch>();
    choice->children = twice();
    EXPECT_EQ(Written({choice}).countOf("IndexedFaceSet"), 1U);
    auto const levels = node();
    levels->become<FltVisualLevels>().distances = {10, 20};
    levels->children = twice();
    EXPECT_EQ(Written({levels}).countOf("IndexedFaceSet"), 1U);
}

TEST(FltVrmlWriter, writesAMirroredPartOnceMore)
{
    auto const shared = withTriangle("wheel");
    std::vector<std::shared_ptr<FltVisualNode>> places;
    for (float const side : {1.0F, -1.0F, 1.0F, -1.0F}) {
        places.push_back(node());
        places.back()->transform = {scaled(1, side, 1)};
        places.back()->children = {shared};
    }
    Written const file(places);
    EXPECT_EQ(file.countOf("IndexedFaceSet"), 2U);
    EXPECT_EQ(file.countOf("ccw FALSE"), 1U);
    EXPECT_TRUE(file.holds({"DEF wheel ", "DEF wheel_2 ", "USE wheel\n", "USE wheel_2\n"})) << file.text;
    EXPECT_EQ(file.countOf("scale"), 0U) << "a mirror is half a turn, and points the other way round";
}

TEST(FltVrmlWriter, writesLevelsWithDistancesInTheirOwnUnit)
{
    auto const levels = node();
    FltVisualLevels parts;
    parts.distances = {30.48, 304.8};
    parts.center = SbVec3f(1, 2, 3);
    levels->become<FltVisualLevels>(std::move(parts));
    levels->children = {withTriangle(), nullptr, withTriangle()};
    auto const feet = node();
    feet->become<FltVisualScale>().factor = 0.3048;
    feet->children = {levels};
    Written const file({feet});
    EXPECT_TRUE(file.holds({"scale 0.3048 0.3048 0.3048", "LOD {", "center 1 2 3\n", "range [", "100", "1000",
                            "level [", "Shape {", "Group {", "Shape {"}))
        << file.text;
}

TEST(FltVrmlWriter, writesEachFrameOfAFlipBookAndNoOther)
{
    Node const pages = node({named("first"), nullptr, named("last")});
    pages->become<FltVisualFlipBook>();
    std::string text = Written({pages}).text;
    std::size_t const begin = text.find("choice [");
    ASSERT_NE(begin, std::string::npos);
    text = text.substr(begin, text.find("\n  ]", begin) - begin);
    std::size_t groups = 0;
    for (std::size_t at = text.find("Group {"); at != std::string::npos; at = text.find("Group {", at + 1))
        ++groups;
    EXPECT_EQ(groups, 3U) << text;
}

TEST(FltVrmlWriter, groupsLevelsOnlyWhereTheyAreNotOneNode)
{
    auto const levels = node();
    levels->become<FltVisualLevels>().distances = {100, 200};
    levels->children = {named("near"), named("middle"), nullptr};
    EXPECT_TRUE(Written({levels}).holds({"level [", "DEF near Group {", "DEF middle Group {", "Group {"}));
    std::size_t const groups = Written({levels}).countOf("Group {");
    levels->children[1] = nullptr;
    EXPECT_EQ(Written({levels}).countOf("Group {"), groups) << "one for the gap instead of the child's own";
    levels->children[1] = node();
    EXPECT_EQ(Written({levels}).countOf("DEF part"), 1U) << "of the levels, which this test holds too";
}

TEST(FltVrmlWriter, givesEachChildOfASwitchADoor)
{
    auto const choice = named("lights");
    auto& parts = choice->become<FltVisualSwitch>();
    parts.masks = {2, 1, 1};
    parts.wordsPerMask = 1;
    auto const lamp = named("lamp");
    lamp->become<FltVisualLight>();
    choice->children = {withTriangle("off"), withTriangle("on"), lamp};
    Written const file({choice});
    EXPECT_TRUE(file.holds({"DEF lights Group", "whichChoice -1", "DEF off ", "whichChoice 0", "DEF on ",
                            "DEF lamp DirectionalLight {", "on FALSE"}))
        << file.text;
    EXPECT_EQ(file.lost, std::vector<std::string>{"masks of switches 2"});
}

TEST(FltVrmlWriter, losesNothingOfASwitchWithOneMask)
{
    auto const choice = node();
    auto& parts = choice->become<FltVisualSwitch>();
    parts.masks = {1};
    parts.wordsPerMask = 1;
    choice->children = {withTriangle("on"), nullptr, withTriangle("off")};
    Written const file({choice});
    EXPECT_TRUE(file.holds({"whichChoice 0", "DEF on ", "whichChoice -1", "DEF off "})) << file.text;
    EXPECT_EQ(file.countOf("Switch {"), 2U);
    EXPECT_TRUE(file.lost.empty());
}

TEST(FltVrmlWriter, showsTheFirstFrameOfAFlipBookAndKeepsTheOthers)
{
    auto const book = node();
    book->become<FltVisualFlipBook>();
    book->children = {withTriangle("first"), withTriangle("second"), withTriangle("last")};
    Written const file({book});
    EXPECT_TRUE(
        file.holds({"Switch {", "whichChoice 0\n", "choice [", "DEF first ", "DEF second ", "DEF last "}))
        << file.text;
    EXPECT_EQ(file.countOf("Shape {"), 3U);
    EXPECT_EQ(file.lost, std::vector<std::string>{"flip-books that play 1"});
}

TEST(FltVrmlWriter, writesStayingLevelsBeneathFinerOnes)
{
    auto const levels = node();
    FltVisualLevels parts;
    parts.distances = {10, 20};
    parts.nextStays = {true, false, false};
    levels->become<FltVisualLevels>(std::move(parts));
    levels->children = {withTriangle("fine"), withTriangle("middle"), withTriangle("coarse")};
    Written const file({levels});
    EXPECT_TRUE(file.holds({"level [", "Group {", "DEF middle ", "DEF fine ", "USE middle", "DEF coarse "}))
        << file.text;
    EXPECT_EQ(file.countOf("Shape {"), 3U);
}

TEST(FltVrmlWriter, hidesWhatIsHidden)
{
    auto const hidden = withTriangle("hidden");
    hidden->isHidden = true;
    Written const file({hidden, withTriangle("shown")});
    EXPECT_TRUE(file.holds({"Switch {", "whichChoice -1\n", "choice [", "DEF hidden ", "DEF shown "}))
        << file.text;
    EXPECT_EQ(file.countOf("Switch {"), 1U);
}

TEST(FltVrmlWriter, writesJointsAtTheirPresentValues)
{
    auto const joint = withTriangle("door");
    FltVisualJoint parts;
    parts.name = "door";
    parts.translation[1].current = 4;
    parts.frame = moved(10, 0, 0);
    joint->become<FltVisualJoint>(std::move(parts));
    Written const file({joint});
    EXPECT_TRUE(file.holds({"DEF door Group", "translation 10 0 0", "DEF door_2 Transform {",
                            "translation 0 4 0", "translation -10 0 0", "Shape {"}))
        << file.text;
    EXPECT_EQ(file.lost, std::vector<std::string>{"limits of degrees of freedom 1"});
}

TEST(FltVrmlWriter, writesCopiesAroundOnePart)
{
    auto const copies = node();
    copies->become<FltVisualCopies>().places = {SbMatrix::identity(), moved(1, 0, 0), scaled(1, 1, -1)};
    copies->children = {withTriangle("tree")};
    Written const file({copies});
    EXPECT_TRUE(file.holds({"DEF tree ", "translation 1 0 0", "USE tree\n", "DEF tree_2 "})) << file.text;
    EXPECT_EQ(file.countOf("IndexedFaceSet"), 2U) << "one of them is mirrored";
}

TEST(FltVrmlWriter, keepsBillboards)
{
    auto const tree = withTriangle();
    FltVisualTurning turning;
    turning.foot = {4500000.5, 2, 3};
    tree->become<FltVisualTurning>(turning);
    Written const upright({tree});
    EXPECT_TRUE(upright.holds({"translation 4500000.5 2 3\n", "rotation 1 0 0 1.57", "Billboard {",
                               "rotation 1 0 0 -1.57", "Shape {"}))
        << upright.text;
    EXPECT_EQ(upright.countOf("axisOfRotation"), 0U);
    tree->as<FltVisualTurning>()->isAboutPoint = true;
    EXPECT_TRUE(Written({tree}).holds({"axisOfRotation 0 0 0\n"}));
}

TEST(FltVrmlWriter, hasLightsShineOnWhatComesAfterThem)
{
    auto const lamp = named("sun");
    FltVisualLight light;
    light.color = {1, 0.5F, 0};
    light.direction = {0, 0.6F, -0.8F};
    lamp->become<FltVisualLight>(light);
    auto const group = node();
    group->children = {withTriangle("before"), lamp, withTriangle("after")};
    Written const file({group});
    EXPECT_TRUE(file.holds({"DEF before ", "Group {\n     children [\n      DEF sun DirectionalLight {",
                            "color 1 0.5 0\n", "direction 0 0.6 -0.8\n", "DEF after "}))
        << file.text;
    EXPECT_TRUE(file.lost.empty());
}

TEST(FltVrmlWriter, writesSpotsWithTheirCone)
{
    auto const lamp = node();
    FltVisualLight light;
    light.kind = FltVisualLight::Kind::spot;
    light.position = {1, 2, 3};
    light.cutOffAngle = 0.5F;
    light.dropOffRate = 0.5F;
    light.attenuation[1] = 0.25F;
    lamp->become<FltVisualLight>(light);
    Written const file({lamp});
    EXPECT_TRUE(file.holds({"SpotLight {", "location 1 2 3\n", "attenuation 1 0.25 0\n", "cutOffAngle 0.5\n",
                            "beamWidth 0.25\n"}))
        << file.text;
    EXPECT_EQ(file.lost, std::vector<std::string>{"ends of what local lights and spots shine on 1"});
}

TEST(FltVrmlWriter, writesAddressesOfOtherFiles)
{
    auto const near = named("near"), far = named("far");
    near->become<FltVisualFile>().path = "near.flt";
    far->become<FltVisualFile>().path = "far.flt";
    Written const file({near, far}, [](std::string const& database) {
        return database == "near.flt" ? std::optional<std::string>("near.wrl") : std::nullopt;
    });
    EXPECT_TRUE(file.holds({"DEF near Group {", "Inline {", "\"near.wrl\"", "DEF far Group {"})) << file.text;
    EXPECT_EQ(file.countOf("Inline"), 1U);
}

TEST(FltVrmlWriter, writesNoTransformationThatIsNone)
{
    auto const broken = withTriangle(), skewed = withTriangle();
    broken->transform = {scaled(std::numeric_limits<float>::quiet_NaN(), 1, 1)};
    SbMatrix perspective = SbMatrix::identity();
    perspective[0][3] = 1;
    skewed->transform = {perspective};
    Written const file({broken, skewed});
    EXPECT_EQ(file.countOf("nan"), 0U);
    EXPECT_EQ(file.countOf("Shape {"), 2U);
    EXPECT_EQ(file.lost, std::vector<std::string>{"transformations with perspective, or of no numbers 2"});
}
