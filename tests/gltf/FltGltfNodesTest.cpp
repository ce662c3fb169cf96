#include "gltf/FltGltfNodes.h"

#include "ReadGltf.h"
#include "gltf/FltGltf.h"
#include "support/MadeNodes.h"
#include "support/Moved.h"
#include "support/SmallStack.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace
{

using namespace MadeNodes;

Node withTriangle(std::string const& name = "")
{
    FltMesh mesh;
    mesh.isLit = false;
    mesh.positions = {{0, 0, 0}, {1, 0, 0}, {0, 0, 1}};
    mesh.indices = {0, 1, 2, FltMesh::end};
    mesh.colors = {~0U};
    Node made = named(name);
    made->meshes = {mesh};
    return made;
}

/// The file of parts below a root.
struct Written {
    explicit Written(std::vector<Node> parts, FltGltfOptions const& options = {})
        : read(glbOf(std::move(parts), options, report))
    {
    }

    static std::string glbOf(std::vector<Node> parts, FltGltfOptions const& options, FltGltfReport& report)
    {
        FltVisual visual;
        Node const root = named("root");
        root->children = std::move(parts);
        visual.root = root;
        return FltGltf::glb(visual, options, &report);
    }

    /// How often something is lost.
    std::uint64_t lost(std::string const& kind) const
    {
        for (FltOmission const& omission : report.omissions)
            if (omission.kind == kind)
                return omission.count;
        return 0;
    }

    bool has(std::string const& name) const
    {
        for (ReadGltf::Json const& one : read.json.at("nodes"))
            if (one.value("name", "") == name)
                return true;
        return false;
    }

    FltGltfReport report;
    ReadGltf read;
};

FltGltfOptions keepingHidden()
{
    FltGltfOptions options;
    options.keepsHidden = true;
    return options;
}

/// Of bytes: one that a thousand levels of nodes more than fill.
#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t smallStack = std::size_t(3) << 20;
#else
constexpr std::size_t smallStack = std::size_t(13) << 16;
#endif

Node switchOfThree()
{
    Node const made = named("switch");
    FltVisualSwitch& choice = made->become<FltVisualSwitch>();
    choice.wordsPerMask = 1;
    choice.masks = {0b010, 0b101};
    choice.maskNames = {"one", "two"};
    choice.currentMask = 1;
    made->children = {withTriangle("first"), withTriangle("second"), withTriangle("third")};
    return made;
}

} // namespace

TEST(FltGltfNodes, StandInOneThatHasYUp)
{
    Node const group = named("group");
    group->transform = {moved(1, 2, 3)};
    group->children = {withTriangle("part")};
    Written const written({group});
    ReadGltf::Json const& top = written.read.nodeAt(written.read.count("nodes") - 1);
    EXPECT_EQ(written.read.json["scenes"][0]["nodes"], ReadGltf::Json({written.read.count("nodes") - 1}));
    EXPECT_NEAR(top["rotation"][0].get<double>(), -std::sqrt(0.5), 1e-12);
    EXPECT_EQ(written.read.node("group")["translation"], ReadGltf::Json({1.0, 2.0, 3.0}));
    EXPECT_TRUE(written.read.node("part").contains("mesh"));
}

TEST(FltGltfNodes, ShowTheChildrenOfTheCurrentMask)
{
    Written const written({switchOfThree()});
    EXPECT_TRUE(written.has("first"));
    EXPECT_FALSE(written.has("second"));
    EXPECT_TRUE(written.has("third"));
    EXPECT_EQ(written.lost("children of switches that aren't shown"), 1U);
    ReadGltf::Json const& told = written.read.node("switch")["extras"]["switch"];
    EXPECT_EQ(told["current"], 1);
    EXPECT_EQ(told["children"], 3);
    EXPECT_EQ(told["masks"], ReadGltf::Json::parse("[[1], [0, 2]]"));
    EXPECT_EQ(told["maskNames"], ReadGltf::Json({"one", "two"}));
    EXPECT_EQ(written.read.node("third")["extras"]["child"], 2);
    EXPECT_FALSE(written.read.json.contains("extensionsUsed") &&
                 written.read.json["extensionsUsed"].dump().find("visibility") != std::string::npos);
}

TEST(FltGltfNodes, KeepWhatIsHiddenIfThatIsWanted)
{
    Node const hidden = withTriangle("hidden");
    hidden->isHidden = true;
    Written const plain({hidden});
    EXPECT_FALSE(plain.has("hidden"));
    EXPECT_EQ(plain.lost("hidden parts"), 1U);
    Written const written({hidden, switchOfThree()}, keepingHidden());
    auto const isMarked = [&](char const* name) {
        return written.read.node(name).contains("extensions") &&
               written.read.node(name)["extensions"]["KHR_node_visibility"]["visible"] == false;
    };
    EXPECT_TRUE(isMarked("hidden"));
    EXPECT_FALSE(isMarked("first"));
    EXPECT_TRUE(isMarked("second"));
    EXPECT_EQ(written.lost("hidden parts"), 0U);
    EXPECT_EQ(written.report.triangles, 2U) << "what is hidden isn't drawn";
}

TEST(FltGltfNodes, AreThoseOfTheFinestLevel)
{
    Node const levels = named("levels");
    FltVisualLevels& ranges = levels->become<FltVisualLevels>();
    ranges.distances = {10, 100, 1000};
    levels->children = {nullptr, withTriangle("near"), withTriangle("far"), nullptr};
    Written const written({levels});
    EXPECT_TRUE(written.has("near"));
    EXPECT_FALSE(written.has("far"));
    EXPECT_EQ(written.lost("coarser levels of detail"), 1U);
    EXPECT_EQ(written.lost("ranges of levels of detail"), 1U);
    EXPECT_EQ(written.read.node("near")["extras"]["child"], 1);
    EXPECT_EQ(written.read.node("levels")["extras"]["levels"]["distances"],
              ReadGltf::Json({10.0, 100.0, 1000.0}));
}

TEST(FltGltfNodes, LoseTheRangesOfLevelsThatBeginOrEndSomewhere)
{
    auto const isLost = [](std::vector<Node> children) {
        Node const levels = named("levels", std::move(children));
        levels->become<FltVisualLevels>().distances = {10};
        return Written({levels}).lost("ranges of levels of detail") == 1;
    };
    EXPECT_FALSE(isLost({withTriangle("near"), withTriangle("far")})) << "something is seen from anywhere";
    EXPECT_TRUE(isLost({withTriangle("near"), nullptr}));
    EXPECT_TRUE(isLost({nullptr, withTriangle("far")}));
    EXPECT_TRUE(isLost({}));
}

TEST(FltGltfNodes, AreThoseOfCoarserLevelsThatStay)
{
    Node const levels = named("levels");
    FltVisualLevels& ranges = levels->become<FltVisualLevels>();
    ranges.distances = {10, 100};
    ranges.nextStays = {true, false};
    levels->children = {withTriangle("fine"), withTriangle("base"), withTriangle("far")};
    Written const written({levels});
    EXPECT_TRUE(written.has("fine"));
    EXPECT_TRUE(written.has("base"));
    EXPECT_FALSE(written.has("far"));
    Node const none = named("none");
    none->become<FltVisualLevels>();
    none->children = {nullptr};
    EXPECT_EQ(Written({none}).lost("coarser levels of detail"), 0U);
}

/// Coarser levels stand outside of the scene, and are drawn where the part covers less of the screen.
TEST(FltGltfNodes, AreThoseOfAllLevelsIfThatIsWanted)
{
    Node const levels = named("levels");
    FltVisualLevels& ranges = levels->become<FltVisualLevels>();
    ranges.distances = {1, 10, 100, 1000};
    levels->children = {nullptr, withTriangle("near"), withTriangle("far"), withTriangle("farthest"),
                        nullptr};
    FltGltfOptions options;
    options.keepsLevels = true;
    Written const written({levels}, options);
    EXPECT_EQ(written.report.triangles, 1U);
    EXPECT_EQ(written.read.corners().size(), 3U) << "of a reader without the extension";
    EXPECT_EQ(written.lost("coarser levels of detail"), 0U);
    ReadGltf::Json const& near = written.read.node("near");
    ReadGltf::Json const& ids = near["extensions"]["MSFT_lod"]["ids"];
    ASSERT_EQ(ids.size(), 2U);
    EXPECT_EQ(written.read.nodeAt(ids[0])["name"], "far");
    EXPECT_EQ(written.read.nodeAt(ids[1])["name"], "farthest");
    EXPECT_EQ(written.read.node("levels")["children"].size(), 1U);
    ReadGltf::Json const& coverage = near["extras"]["MSFT_screencoverage"];
    ASSERT_EQ(coverage.size(), 3U);
    // A triangle with a box of 1 by 1 has a radius of 0.7071.
    EXPECT_NEAR(coverage[0].get<double>(), 0.5 / (100 / 3.0), 1e-9);
    EXPECT_NEAR(coverage[1].get<double>(), 0.5 / (10000 / 3.0), 1e-9);
    EXPECT_EQ(coverage[2], 0);
    ranges.nextStays = {false, false, true, false};
    Written const adding({levels}, options);
    EXPECT_FALSE(adding.has("far"));
    EXPECT_EQ(adding.lost("levels of detail that add to each other"), 1U);
}

TEST(FltGltfNodes, OfLevelsCoverNoMoreThanTheWholeScreen)
{
    double const infinity = std::numeric_limits<double>::infinity();
    FltGltfOptions options;
    options.keepsLevels = true;
    auto const coveragesAt = [&](std::vector<double> distances) {
        Node const levels = named("levels");
        levels->become<FltVisualLevels>().distances = std::move(distances);
        levels->children = {withTriangle("near"), withTriangle("far")};
        return Written({levels}, options).read.node("near")["extras"]["MSFT_screencoverage"];
    };
    // A triangle with a box of 1 by 1 has a radius of 0.7071, and covers half of a screen at 1.7321.
    EXPECT_NEAR(coveragesAt({1.7320508})[0].get<double>(), 0.5, 1e-6);
    EXPECT_EQ(coveragesAt({1.2})[0], 1);
    EXPECT_EQ(coveragesAt({0.1})[0], 1);
    EXPECT_EQ(coveragesAt({0})[0], 1);
    EXPECT_EQ(coveragesAt({infinity})[0], 0);
}

TEST(FltGltfNodes, OfLightsShineFromTheirPlaces)
{
    using Kind = FltVisualLight::Kind;
    auto const nodeOf = [](Kind kind, SbVec3f const& direction) {
        Node const lamp = named("lamp");
        FltVisualLight& light = lamp->become<FltVisualLight>();
        light.kind = kind;
        light.position = SbVec3d(1, 2, 3);
        light.direction = direction;
        return Written({lamp}).read.node("lamp");
    };
    for (Kind const kind : {Kind::infinite, Kind::local, Kind::spot}) {
        ReadGltf::Json const lamp = nodeOf(kind, SbVec3f(0, 2, 0));
        EXPECT_EQ(lamp.contains("translation"), kind != Kind::infinite);
        EXPECT_EQ(lamp.contains("rotation"), kind != Kind::local);
        SbVec3d direction;
        ReadGltf::matrixOf(lamp).multDirMatrix(SbVec3d(0, 0, -1), direction);
        SbVec3d const expected = kind == Kind::local ? SbVec3d(0, 0, -1) : SbVec3d(0, 1, 0);
        EXPECT_LT((direction - expected).length(), 1e-9);
        EXPECT_FALSE(nodeOf(kind, SbVec3f(0, 0, 0)).contains("rotation")) << "it has no direction";
    }
}

/// The frame is a node around the one that moves, and its inverse one in it.
TEST(FltGltfNodes, OfJointsMoveAsTheyDo)
{
    Node const door = withTriangle("door");
    FltVisualJoint& joint = door->become<FltVisualJoint>();
    joint.frame = moved(5, 0, 0);
    joint.yaw = {-90, 90, 90, 1, true};
    joint.translation[2].current = 2;
    Written const written({door});
    ReadGltf::Json const& moving = written.read.node("door");
    EXPECT_EQ(moving["translation"], ReadGltf::Json({0.0, 0.0, 2.0}));
    EXPECT_NEAR(moving["rotation"][2].get<double>(), std::sqrt(0.5), 1e-6);
    EXPECT_EQ(moving["extras"]["joint"]["yaw"],
              ReadGltf::Json::parse(
                  R"({"minimum": -90.0, "maximum": 90.0, "current": 90.0, "step": 1.0, "isLimited": true})"));
    EXPECT_EQ(written.read.nodeAt(moving["children"][0])["translation"], ReadGltf::Json({-5.0, 0.0, 0.0}));
    // A quarter turn about the place at 5: (1, 0, 0) is 4 before it, and comes to 4 below it; z is up.
    auto const corners = written.read.corners();
    bool isThere = false;
    for (ReadGltf::Corner const& corner : corners)
        isThere = isThere || (corner.place - SbVec3d(5, 2, 4)).length() < 1e-5;
    EXPECT_TRUE(isThere);
}

/// Copies of a group with a part in it, at these places.
Node copiesOf(std::vector<SbDPMatrix> places)
{
    Node const copies = named("row"), tree = named("tree");
    copies->become<FltVisualCopies>({std::move(places)});
    tree->transform = {moved(0, 5, 0)};
    tree->children = {withTriangle("leaves")};
    copies->children = {tree};
    return copies;
}

FltGltfOptions instancing()
{
    FltGltfOptions options;
    options.usesInstancing = true;
    return options;
}

TEST(FltGltfNodes, TellCopiesAtOnceIfThatIsWanted)
{
    Node const row = copiesOf({moved(0, 0, 0), moved(10, 0, 0), moved(20, 0, 0)});
    Written const plain({row}), written({row}, instancing());
    EXPECT_EQ(plain.report.triangles, 3U);
    EXPECT_EQ(written.report.triangles, 3U);
    EXPECT_LT(written.report.nodes, plain.report.nodes);
    EXPECT_TRUE(written.has("tree") && written.has("leaves"));
    EXPECT_EQ(written.read.json["extensionsRequired"], ReadGltf::Json::array({"EXT_mesh_gpu_instancing"}));
    EXPECT_FALSE(plain.read.json.contains("extensionsRequired"));
}

TEST(FltGltfNodes, OfCopiesStayWithinASmallStack)
{
    Node const row = copiesOf({moved(0, 0, 0), moved(1, 0, 0)});
    for (int i = 0; i < 1000; ++i) {
        Node const outer = node();
        outer->children = {row->children[0]};
        row->children[0] = outer;
    }
    std::uint64_t nodes = 0;
    runOnStackOf(smallStack, [&] { nodes = Written({row}, instancing()).report.nodes; });
    EXPECT_GT(nodes, 10U);
}

TEST(FltGltfNodes, AreOneForEachPlaceWhereCopiesHaveNoOtherForm)
{
    SbDPMatrix mirror = SbDPMatrix::identity();
    mirror.setScale(SbVec3d(-1, 1, 1));
    Node const withJoint = copiesOf({moved(0, 0, 0), moved(1, 0, 0)});
    withJoint->children[0]->children[0]->become<FltVisualJoint>();
    for (Node const& row : {copiesOf({moved(0, 0, 0), mirror}), copiesOf({moved(0, 0, 0)}), withJoint}) {
        Written const written({row}, instancing());
        EXPECT_FALSE(written.read.json.contains("extensionsRequired"));
        EXPECT_EQ(written.report.nodes, Written({row}).report.nodes);
    }
}

TEST(FltGltfNodes, OfCopiesShareAMesh)
{
    Node const copies = named("copies");
    copies->become<FltVisualCopies>({{moved(0, 0, 0), moved(10, 0, 0), moved(20, 0, 0)}});
    copies->children = {withTriangle("post")};
    Written const written({copies});
    EXPECT_EQ(written.read.count("meshes"), 1U);
    EXPECT_EQ(written.report.triangles, 3U);
    double farthest = 0;
    for (ReadGltf::Corner const& corner : written.read.corners())
        farthest = std::max(farthest, corner.place[0]);
    EXPECT_EQ(farthest, 21);
}

TEST(FltGltfNodes, OfFlipBooksAreTheFirstFrame)
{
    Node const book = named("book");
    FltVisualFlipBook flipBook;
    flipBook.steps = {{0, 0.25}, {1, 0.5}};
    flipBook.loops = 3;
    book->become<FltVisualFlipBook>(flipBook);
    book->children = {withTriangle("frame0"), withTriangle("frame1")};
    Written const written({book});
    EXPECT_TRUE(written.has("frame0"));
    EXPECT_FALSE(written.has("frame1"));
    EXPECT_EQ(written.lost("flip-books that play"), 1U);
    EXPECT_EQ(written.read.node("book")["extras"]["flipBook"],
              ReadGltf::Json::parse(R"({"frames": [0, 1], "seconds": [0.25, 0.5], "loops": 3})"));
    EXPECT_TRUE(Written({book}, keepingHidden()).has("frame1"));
}

TEST(FltGltfNodes, OfTurningFacesStandAsTheyAreStored)
{
    Node const tree = withTriangle("tree");
    FltVisualTurning& turning = tree->become<FltVisualTurning>();
    turning.foot = SbVec3d(1, 2, 3);
    Written const written({tree});
    EXPECT_EQ(written.read.node("tree")["extras"]["turning"], "axis");
    EXPECT_EQ(written.read.node("tree")["translation"], ReadGltf::Json({1.0, 2.0, 3.0}));
    EXPECT_EQ(written.lost("turning faces, which stand still"), 1U);
}

TEST(FltGltfNodes, OfTextsAndOtherFilesTellThem)
{
    Node const sign = named("sign");
    FltVisualText& text = sign->become<FltVisualText>();
    text.lines = {"Gate 7", "O\xfcpen"};
    text.place = SbVec3d(1, 2, 3);
    text.color = 0xff8000ff;
    Node const other = named("other");
    other->become<FltVisualFile>({"sub/other.flt"});
    Written const written({sign, other});
    ReadGltf::Json const& told = written.read.node("sign")["extras"]["text"];
    EXPECT_EQ(told["lines"], ReadGltf::Json({"Gate 7", "O\u00fcpen"}));
    EXPECT_EQ(told["place"], ReadGltf::Json({1.0, 2.0, 3.0}));
    EXPECT_EQ(told["color"], ReadGltf::Json({255, 128, 0}));
    EXPECT_EQ(written.lost("texts"), 1U);
    EXPECT_EQ(written.read.node("other")["extras"]["reference"], "sub/other.flt");
    FltGltfOptions options;
    options.addressOf = [](std::string const&) { return "tiles/other.glb"; };
    EXPECT_EQ(Written({other}, options).read.node("other")["extras"]["reference"], "tiles/other.glb");
}

/// The lights of glTF shine along -z.
TEST(FltGltfNodes, OfLightsShineWhereTheyDo)
{
    Node const sun = named("sun");
    FltVisualLight& light = sun->become<FltVisualLight>();
    light.direction = SbVec3f(1, 0, 0);
    light.color = SbColor(1, 0.5F, 0);
    Node const lamp = named("lamp");
    FltVisualLight& spot = lamp->become<FltVisualLight>();
    spot.kind = FltVisualLight::Kind::spot;
    spot.position = SbVec3d(1, 2, 3);
    spot.cutOffAngle = 0.5F;
    Written const written({sun, lamp});
    SbVec3d direction;
    ReadGltf::matrixOf(written.read.node("sun")).multDirMatrix(SbVec3d(0, 0, -1), direction);
    EXPECT_LT((direction - SbVec3d(1, 0, 0)).length(), 1e-9);
    EXPECT_EQ(written.read.node("lamp")["translation"], ReadGltf::Json({1.0, 2.0, 3.0}));
    ReadGltf::Json const& lights = written.read.json["extensions"]["KHR_lights_punctual"]["lights"];
    EXPECT_EQ(lights[0]["type"], "directional");
    EXPECT_NEAR(lights[0]["color"][1].get<double>(), 0.214041, 1e-6);
    EXPECT_NEAR(lights[0]["intensity"].get<double>(), 3.14159265, 1e-6);
    EXPECT_LT(lights[1]["spot"]["innerConeAngle"], lights[1]["spot"]["outerConeAngle"]);
    EXPECT_EQ(written.lost("attenuation of lights"), 1U);
}

TEST(FltGltfNodes, TellTheirRecordsUnlessNobodyWantsThat)
{
    Node const part = named("part");
    part->record = {1234, 0};
    part->comments = {"two\nlines", "one"};
    Written const written({part});
    EXPECT_EQ(written.read.node("part")["extras"],
              ReadGltf::Json::parse(
                  R"({"record": {"file": 0, "offset": 1234}, "comments": [["two", "lines"], ["one"]]})"));
    FltGltfOptions options;
    options.hasExtras = false;
    EXPECT_EQ(Written({part}, options).read.json.dump().find("extras"), std::string::npos);
}

TEST(FltGltfNodes, HoldNoMatrixThatIsNoNumbers)
{
    Node const bad = withTriangle("bad");
    bad->transform = {moved(std::numeric_limits<double>::infinity(), 0, 0)};
    Node const large = withTriangle("large");
    large->transform = {moved(1e200, 0, 0)};
    Node const perspective = withTriangle("perspective");
    SbDPMatrix matrix = moved(1, 0, 0);
    matrix[0][3] = 0.5;
    perspective->transform = {matrix};
    Written const written({bad, large, perspective});
    EXPECT_EQ(written.lost("transformations with perspective, or of no numbers"), 3U);
    EXPECT_FALSE(written.read.node("bad").contains("translation"));
    EXPECT_FALSE(written.read.node("large").contains("translation"));
}

/// A part that is flattened takes along all that stands in it.
TEST(FltGltfNodes, WorkAFlatteningMatrixIntoAllThatStandsInIt)
{
    Node const flat = named("flat");
    SbDPMatrix matrix = SbDPMatrix::identity();
    matrix[0][0] = 0;
    flat->transform = {matrix};
    Node const inner = named("inner");
    inner->transform = {moved(3, 4, 5)};
    inner->children = {withTriangle("leaf")};
    flat->children = {inner};
    Written const written({flat});
    EXPECT_FALSE(written.read.node("flat").contains("scale"));
    EXPECT_FALSE(written.read.node("inner").contains("translation"));
    for (ReadGltf::Corner const& corner : written.read.corners()) {
        EXPECT_EQ(corner.place[0], 0);
        EXPECT_EQ(corner.place[2], -4);
    }
}

TEST(FltGltfNodes, AreBoundedWhateverInstancesMakeOfThem)
{
    Node part = withTriangle("leaf");
    part->comments = {std::string(1000, 'x')};
    for (int level = 0; level < 30; ++level) {
        Node const both = node();
        both->children = {part, part};
        part = both;
    }
    FltGltfReport report;
    EXPECT_LT(Written::glbOf({part}, {}, report).size(), 200'000'000U);
    ASSERT_EQ(report.omissions.size(), 1U);
    EXPECT_EQ(report.omissions[0].kind, "parts that would make the file too large");
}
