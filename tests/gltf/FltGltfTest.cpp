#include "gltf/FltGltf.h"

#include "ReadGltf.h"
#include "loader/FltLoader.h"
#include "support/CompleteDatabase.h"
#include "support/SmallPictures.h"
#include "textures/Picture.h"
#include "textures/PictureBytes.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <limits>

using Fields = FltWriter::Fields;

namespace
{

constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

/// A database in a process in which the toolkit isn't started.
class FltGltfTest : public testing::Test
{
protected:
    FltVisual load()
    {
        return loader.loadVisual(database.folder.write("model.flt", database.writer.bytes()));
    }

    ReadGltf glb() { return ReadGltf(FltGltf::glb(load(), options, &report)); }

    /// A triangle without symmetry, which looks along z.
    std::vector<double> triangle() { return database.polygon({{1, 2, 3}, {4, 2, 3}, {1, 7, 3}}); }

    /// A group with a matrix that holds a triangle.
    void addWithMatrix(std::vector<double> const& matrix)
    {
        std::vector<double> const offsets = triangle();
        database.begin().add("Group", {{"idASCII", "placed"}}).add("Matrix", {{"matrix", matrix}}).push();
        database.object(offsets, CompleteDatabase::face({}, CompleteDatabase::red));
        database.writer.pop();
    }

    FltLoader loader;
    FltGltfOptions options;
    FltGltfReport report;
    CompleteDatabase database;
};

void expectPlaces(ReadGltf const& read, std::vector<SbVec3d> expected, double error = 1e-6)
{
    std::vector<SbVec3d> places;
    for (ReadGltf::Corner const& corner : read.corners())
        places.push_back(corner.place);
    auto const isBefore = [](SbVec3d const& one, SbVec3d const& other) {
        auto const rounded = [](double value) { return std::round(value * 1e4); };
        for (int i = 0; i < 3; ++i)
            if (rounded(one[i]) != rounded(other[i]))
                return one[i] < other[i];
        return false;
    };
    std::sort(places.begin(), places.end(), isBefore);
    std::sort(expected.begin(), expected.end(), isBefore);
    ASSERT_EQ(places.size(), expected.size());
    for (std::size_t i = 0; i < places.size(); ++i)
        EXPECT_LT((places[i] - expected[i]).length(), error)
            << places[i][0] << ' ' << places[i][1] << ' ' << places[i][2];
}

double largestNumberOf(ReadGltf::Json const& json)
{
    double largest = json.is_number() ? std::abs(json.get<double>()) : 0;
    if (json.is_structured())
        for (ReadGltf::Json const& part : json)
            largest = std::max(largest, largestNumberOf(part));
    return largest;
}

} // namespace

/// Colours are stored as a screen shows them, and written as light adds up.
TEST_F(FltGltfTest, WritesColoursAsLight)
{
    std::vector<double> const offsets = triangle(),
                              color = {255, 0x99, 0x66, 0x33}; // alpha, blue, green, red
    database.begin();
    database.object(offsets, CompleteDatabase::face({}, color), "house");
    ReadGltf::Json const factor = glb().json["materials"][0]["pbrMetallicRoughness"]["baseColorFactor"];
    EXPECT_NEAR(factor[0], 0.0331, 1e-4);
    EXPECT_NEAR(factor[1], 0.1329, 1e-4);
    EXPECT_NEAR(factor[2], 0.3185, 1e-4);
    EXPECT_EQ(factor[3], 1);
}

TEST_F(FltGltfTest, WritesWhatIsToBeSeen)
{
    std::vector<double> const offsets = triangle();
    database.begin();
    database.object(offsets, CompleteDatabase::face({}, CompleteDatabase::red), "house");
    ReadGltf const read = glb();
    expectPlaces(read, {{1, 3, -2}, {4, 3, -2}, {1, 3, -7}});
    for (ReadGltf::Corner const& corner : read.corners())
        EXPECT_LT((corner.normal - SbVec3d(0, 1, 0)).length(), 1e-6) << "z up has become y up";
    ASSERT_EQ(read.count("materials"), 1U);
    EXPECT_EQ(read.json["materials"][0], ReadGltf::Json::parse(R"({"pbrMetallicRoughness":
        {"baseColorFactor": [1.0, 0.0, 0.0, 1.0], "metallicFactor": 0, "roughnessFactor": 1.0}})"));
    EXPECT_TRUE(read.node("house").contains("mesh"));
    EXPECT_FALSE(read.json.contains("extensionsRequired"));
    EXPECT_EQ(report.triangles, 1U);
    EXPECT_EQ(report.vertices, 3U);
    EXPECT_TRUE(report.omissions.empty());
}

TEST_F(FltGltfTest, HasMirrorsTurnOneAxis)
{
    addWithMatrix({-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 10, 0, 0, 1});
    ReadGltf const read = glb();
    expectPlaces(read, {{9, 3, -2}, {6, 3, -2}, {9, 3, -7}});
    EXPECT_EQ(read.node("placed").at("scale"), ReadGltf::Json({-1.0, 1.0, 1.0}));
    EXPECT_EQ(read.numbers(read.json["meshes"][0]["primitives"][0]["indices"]),
              (std::vector<double>{0, 1, 2}))
        << "readers turn the sides of what is mirrored";
}

TEST_F(FltGltfTest, HasTwoNodesForAShear)
{
    addWithMatrix({1, 0, 0, 0, 0.5, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    ReadGltf const read = glb();
    expectPlaces(read, {{2, 3, -2}, {5, 3, -2}, {4.5, 3, -7}});
    ReadGltf::Json const& placed = read.node("placed");
    ASSERT_EQ(placed.at("children").size(), 1U);
    EXPECT_TRUE(read.nodeAt(placed.at("children")[0]).contains("rotation"));
}

TEST_F(FltGltfTest, IsInMetres)
{
    database.writer = FltWriter(1570, {{"vertexCoordinateUnits", 4}});
    std::vector<double> const offsets = database.polygon({{1000, 0, 0}, {1010, 0, 0}, {1000, 20, 0}});
    database.begin();
    database.object(offsets);
    expectPlaces(glb(), {{304.8, 0, 0}, {307.848, 0, 0}, {304.8, 0, -6.096}}, 1e-4);
    loader.units = FltLoader::Units::stored;
    ReadGltf const stored = glb();
    expectPlaces(stored, {{1000, 0, 0}, {1010, 0, 0}, {1000, 0, -20}});
    EXPECT_NEAR(stored.nodeAt(stored.count("nodes") - 1)["extras"]["origin"]["metresPerUnit"].get<double>(),
                0.3048, 1e-12);
}

TEST_F(FltGltfTest, HasColoursOfCornersOverATexture)
{
    SmallPictures::writePng(database.folder / "wall.png", 4, 4);
    std::vector<double> offsets;
    for (int i = 0; i < 3; ++i)
        offsets.push_back(database.writer.vertex(
            "VertexColorUv", i == 1, i == 2, 0,
            {{"flags", 0x1000},
             {"packedColor", i == 2 ? CompleteDatabase::white : std::vector<double>{255, 128, 0, 255}},
             {"texture", {i == 1 ? 1.0 : 0.0, i == 2 ? 0.75 : 0.0}}}));
    database.writer.add("TexturePattern", {{"fileName", "C:\\pictures\\wall.png"}, {"patternIndex", 3}});
    database.begin();
    database.object(offsets, CompleteDatabase::face({{"texturePatternIndex", 3}, {"lightMode", 1}}));
    ReadGltf const read = glb();
    std::vector<ReadGltf::Corner> const corners = read.corners();
    ASSERT_EQ(corners.size(), 3U);
    for (ReadGltf::Corner const& corner : corners) {
        bool const isThird = corner.place[2] < -0.5;
        EXPECT_DOUBLE_EQ(corner.color[0], 1);
        EXPECT_NEAR(corner.color[1], isThird ? 1 : 0, 1e-4);
        EXPECT_NEAR(corner.color[2], isThird ? 1 : 0.21586, 1e-4) << "in equal steps of light";
        EXPECT_NEAR(corner.uv[1], isThird ? 0.25 : 1, 1e-6) << "from the top of the picture";
    }
    EXPECT_EQ(read.json["images"][0]["name"], "wall.png");
    EXPECT_EQ(read.json["images"][0]["mimeType"], "image/png");
    EXPECT_TRUE(read.json["materials"][0]["extensions"].contains("KHR_materials_unlit"));
    EXPECT_TRUE(read.json["materials"][0]["pbrMetallicRoughness"].contains("baseColorTexture"));
}

/// A map is as fine as what lies about zero: one node alone holds large numbers.
TEST_F(FltGltfTest, HoldsLargeNumbersInTheNodeAtTheTopAlone)
{
    std::vector<double> const offsets = database.polygon(
        {{4500000.125, 600000.25, 30}, {4500001.125, 600000.25, 30}, {4500000.125, 600002.25, 30}});
    database.begin();
    database.object(offsets);
    ReadGltf read = glb();
    expectPlaces(
        read, {{4500000.125, 30, -600000.25}, {4500001.125, 30, -600000.25}, {4500000.125, 30, -600002.25}},
        1e-7);
    ReadGltf::Json& top = read.json["nodes"][read.count("nodes") - 1];
    EXPECT_GT(largestNumberOf(top.at("translation")), 4e6);
    EXPECT_GT(largestNumberOf(top.at("extras").at("origin").at("place")), 4e6);
    top.erase("translation");
    top.erase("extras");
    EXPECT_LT(largestNumberOf(read.json["nodes"]), 1e4);
    for (ReadGltf::Json const& accessor : read.json["accessors"])
        EXPECT_LT(largestNumberOf(accessor.value("max", ReadGltf::Json())), 100);
}

TEST_F(FltGltfTest, TellsWhereItIsOnEarth)
{
    database.writer =
        FltWriter(1570, {{"projectionType", 3}, {"originLatitude", 48.5}, {"originLongitude", -11.25}});
    database.begin();
    ReadGltf const read = glb();
    ReadGltf::Json const& origin = read.nodeAt(read.count("nodes") - 1).at("extras").at("origin");
    EXPECT_EQ(origin["latitude"], 48.5);
    EXPECT_EQ(origin["longitude"], -11.25);
    EXPECT_EQ(origin["projection"], 3);
    EXPECT_EQ(origin["ellipsoid"], 0);
    EXPECT_EQ(origin["unit"], "metres");
}

TEST_F(FltGltfTest, HasFlatteningWorkedIn)
{
    addWithMatrix({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 5, 1});
    ReadGltf const read = glb();
    expectPlaces(read, {{1, 5, -2}, {4, 5, -2}, {1, 5, -7}});
    for (ReadGltf::Corner const& corner : read.corners())
        EXPECT_LT((corner.normal - SbVec3d(0, 1, 0)).length(), 1e-6);
}

/// Readers stop at a name that isn't UTF-8 or at a number that isn't there.
TEST_F(FltGltfTest, HoldsNumbersAndUtf8AloneWhateverTheDatabaseHolds)
{
    std::vector<double> const bad = database.polygon({{noNumber, 0, 0}, {1, 0, 0}, {0, 1e300, 0}});
    std::vector<double> const good = triangle();
    std::vector<double> matrix(16, noNumber);
    database.begin().add("Group", {{"idASCII", "\xff\xfe<\x01"}}).add("Matrix", {{"matrix", matrix}});
    database.writer.add("Comment", {{"textDescription", "na\xefve\nline \x80"}}).push();
    database.object(bad, CompleteDatabase::face(), "bad").object(good, CompleteDatabase::face(), "good");
    database.writer.pop().add("DOF",
                              {{"idASCII", "joint"}, {"XMinValue", noNumber}, {"XMaxValue", noNumber}});
    std::string const bytes = FltGltf::glb(load(), options, &report);
    ReadGltf const read(bytes); // which parses strictly
    EXPECT_EQ(bytes.find("null"), std::string::npos);
    EXPECT_EQ(bytes.find("NaN"), std::string::npos);
    expectPlaces(read, {{1, 3, -2}, {4, 3, -2}, {1, 3, -7}});
    EXPECT_EQ(read.node("\u00ff\u00fe< ").at("extras").at("comments"),
              ReadGltf::Json::parse("[[\"na\u00efve\", \"line \u0080\"]]"));
}

TEST_F(FltGltfTest, IsTheSameInTwoRuns)
{
    addWithMatrix({0, 2, 0, 0, -1, 0.5, 0, 0, 0, 0, 1, 0, 3, 4, 5, 1});
    std::string const first = FltGltf::glb(load());
    EXPECT_EQ(first, FltGltf::glb(load()));
}

TEST_F(FltGltfTest, HasAMaterialWithoutATextureThatIsMissing)
{
    std::vector<double> const offsets = database.square();
    database.writer.add("TexturePattern", {{"fileName", "gone/none.rgb"}, {"patternIndex", 0}});
    database.begin();
    database.object(offsets, CompleteDatabase::face({{"texturePatternIndex", 0}}));
    ReadGltf const read = glb();
    EXPECT_EQ(report.missingTextures, std::vector<std::string>{"gone/none.rgb"});
    EXPECT_EQ(read.count("images"), 0U);
    EXPECT_EQ(read.json["materials"][0]["pbrMetallicRoughness"].count("baseColorTexture"), 0U);
    EXPECT_EQ(read.json["meshes"][0]["primitives"][0]["attributes"].count("TEXCOORD_0"), 0U);
}

TEST_F(FltGltfTest, SharesMeshesOfInstances)
{
    std::vector<double> const offsets = triangle();
    database.begin().add("InstanceDefinition", {{"instanceDefinitionNumber", 1}}).push();
    database.object(offsets);
    database.writer.pop();
    for (int i = 0; i < 3; ++i)
        database.writer.add("Group").push().add("InstanceReference", {{"instanceDefinitionNumber", 1}}).pop();
    ReadGltf const read = glb();
    EXPECT_EQ(read.count("meshes"), 1U);
    EXPECT_EQ(read.corners().size(), 9U);
    EXPECT_EQ(report.triangles, 3U);
    EXPECT_EQ(report.vertices, 3U);
}

TEST_F(FltGltfTest, LeavesTheToolAWayToReadInMemoryOrFromAStream)
{
    addWithMatrix({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 3, 4, 5, 1});
    FltVisual const visual = load();
    std::string const path = database.folder / "x.GLB";
    FltGltfReport const written = FltGltf::write(visual, path);
    EXPECT_EQ(contentsOf(path), FltGltf::glb(visual));
    EXPECT_EQ(written.files, std::vector<std::string>{path});
    EXPECT_EQ(written.bytes, std::filesystem::file_size(path));
    std::string const streamed = database.folder / "streamed";
    FILE* const stream = std::fopen(streamed.c_str(), "wb");
    ASSERT_NE(stream, nullptr);
    FltGltf::writeGlb(visual, stream);
    std::fclose(stream);
    EXPECT_EQ(contentsOf(streamed), contentsOf(path));
}

TEST_F(FltGltfTest, IsInSeveralFilesAsText)
{
    SmallPictures::writePng(database.folder / "wall.png", 4, 4);
    std::vector<double> const offsets = database.square();
    database.writer.add("TexturePattern", {{"fileName", "wall.png"}, {"patternIndex", 3}});
    database.begin();
    database.object(offsets, CompleteDatabase::face({{"texturePatternIndex", 3}}));
    std::string const path = database.folder / "my house.gltf";
    FltGltfReport const written = FltGltf::write(load(), path);
    EXPECT_EQ(written.files, (std::vector<std::string>{database.folder / "my house_textures/wall.png",
                                                       database.folder / "my house.bin", path}));
    auto const json = ReadGltf::Json::parse(contentsOf(path));
    EXPECT_EQ(json["images"][0]["uri"], "my%20house_textures/wall.png");
    EXPECT_EQ(json["buffers"][0]["uri"], "my%20house.bin");
    EXPECT_EQ(json["buffers"][0]["byteLength"], std::filesystem::file_size(database.folder / "my house.bin"));
    EXPECT_EQ(contentsOf(database.folder / "my house_textures/wall.png"),
              contentsOf(database.folder / "wall.png"))
        << "byte for byte";
}

TEST_F(FltGltfTest, SharesTexturesOfSeveralFilesByTheirContent)
{
    SmallPictures::writePng(database.folder / "wall.png", 4, 4);
    std::vector<double> const offsets = database.square();
    database.writer.add("TexturePattern", {{"fileName", "wall.png"}, {"patternIndex", 3}});
    database.begin();
    database.object(offsets, CompleteDatabase::face({{"texturePatternIndex", 3}}));
    options.textureDirectory = database.folder / "out/textures";
    std::filesystem::create_directories(database.folder / "out/deep");
    FltVisual const visual = load();
    auto const first = FltGltf::write(visual, database.folder / "out/a.glb", options);
    auto const second = FltGltf::write(visual, database.folder / "out/deep/b.gltf", options);
    ASSERT_EQ(first.files.size(), 2U);
    EXPECT_EQ(first.files[0], second.files[0]);
    std::string const name = std::filesystem::path(first.files[0]).filename().string();
    EXPECT_EQ(name.size(), 20U);
    EXPECT_EQ(ReadGltf(contentsOf(database.folder / "out/a.glb")).json["images"][0]["uri"],
              "textures/" + name);
    EXPECT_EQ(ReadGltf::Json::parse(contentsOf(database.folder / "out/deep/b.gltf"))["images"][0]["uri"],
              "../textures/" + name);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(database.folder / "out/textures"), {}), 1);
}

TEST_F(FltGltfTest, LeavesTheDatabaseAndItsTexturesAlone)
{
    std::filesystem::create_directories(database.folder / "x_textures");
    SmallPictures::writePng(database.folder / "x_textures/wall.png", 4, 4);
    std::vector<double> const offsets = database.square();
    database.writer.add("TexturePattern", {{"fileName", "x_textures/wall.png"}, {"patternIndex", 3}});
    database.begin();
    database.object(offsets, CompleteDatabase::face({{"texturePatternIndex", 3}}));
    FltVisual const visual = load();
    std::string const before = contentsOf(database.folder / "x_textures/wall.png");
    EXPECT_THROW(FltGltf::write(visual, database.folder / "x.gltf"), FltGltfError);
    EXPECT_FALSE(std::filesystem::exists(database.folder / "x.gltf"));
    EXPECT_FALSE(std::filesystem::exists(database.folder / "x.bin"));
    std::filesystem::create_hard_link(database.folder / "model.flt", database.folder / "model.glb");
    EXPECT_THROW(FltGltf::write(visual, database.folder / "model.glb"), FltGltfError);
    EXPECT_EQ(contentsOf(database.folder / "model.glb"), database.writer.bytes());
    EXPECT_EQ(contentsOf(database.folder / "x_textures/wall.png"), before);
}

TEST_F(FltGltfTest, SaysWhyAFileIsNotWritten)
{
    database.begin();
    FltVisual const visual = load();
    EXPECT_THROW(FltGltf::write(visual, database.folder / "x.obj"), FltGltfError);
    try {
        FltGltf::write(visual, database.folder / "none/x.glb");
        FAIL();
    } catch (FltGltfError const& error) {
        EXPECT_EQ(error.systemError(), ENOENT);
        EXPECT_EQ(error.file(), database.folder / "none/x.glb");
        EXPECT_NE(std::string(error.what()).find("Check the directory"), std::string::npos);
    }
}

TEST_F(FltGltfTest, WritesAVisualThatHoldsNothing)
{
    ReadGltf const read(FltGltf::glb(FltVisual()));
    EXPECT_EQ(read.count("nodes"), 2U);
    EXPECT_EQ(read.count("meshes"), 0U);
}
