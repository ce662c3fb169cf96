// What flt2iv writes as VRML97, and what another reader makes of it.

#include "ProgramRun.h"
#include "SmallDatabases.h"
#include "pictures/PictureDatabases.h"
#include "support/SmallPictures.h"
#include "support/Text.h"
#include "vrml/SceneSurvey.h"

#include "textures/Picture.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

namespace
{

constexpr char threeFolder[] = "/usr/share/javascript/three";

bool isReaderThere()
{
    return std::string(VELLOREADER_NODE).find("NOTFOUND") == std::string::npos &&
           std::filesystem::exists(std::string(threeFolder) + "/examples/js/loaders/VRMLLoader.js");
}

class Flt2ivVrml : public testing::Test
{
protected:
    /// Converts into a file, which has to go well. @return what was written on standard error
    std::string convert(std::string const& options, std::string const& input, std::string const& name) const
    {
        ProgramRun const run("flt2iv", options + " -o " + (folder / name) + " " + input);
        EXPECT_EQ(run.exitCode, 0) << options << run.errors;
        return run.errors;
    }

    /// What the other reader says of files, by their names.
    std::map<std::string, nlohmann::json> readByAnother(std::vector<std::string> const& names) const
    {
        std::string command =
            std::string(VELLOREADER_NODE) + " " + VELLOREADER_SECOND_READER + " " + threeFolder;
        for (std::string const& name : names)
            command += " " + (folder / name);
        EXPECT_EQ(
            std::system((command + " >" + (folder / "read.json") + " 2>" + (folder / "errors")).c_str()), 0);
        EXPECT_EQ(contentsOf(folder / "errors"), "");
        std::map<std::string, nlohmann::json> read;
        std::ifstream lines(folder / "read.json");
        for (std::string line; std::getline(lines, line);) {
            nlohmann::json report = nlohmann::json::parse(line);
            std::string const file = report.at("file");
            read[file.substr(file.rfind('/') + 1)] = std::move(report);
        }
        return read;
    }

    ScratchFolder folder;
};

/// What the other reader sees is what the toolkit draws of the same database's scene.
void expectSame(nlohmann::json const& read, SceneSurvey const& scene)
{
    ASSERT_FALSE(read.contains("problem")) << read;
    EXPECT_EQ(read.at("triangles"), scene.triangles) << read;
    EXPECT_EQ(read.at("unlit"), scene.unlit) << read;
    EXPECT_EQ(read.at("textured"), scene.textured) << read;
    EXPECT_EQ(read.at("turning"), scene.turning) << read;
    EXPECT_EQ(read.at("lines"), scene.lines) << read;
    EXPECT_EQ(read.at("points"), scene.points) << read;
    EXPECT_EQ(read.at("textures"), scene.pictures.size()) << read;
    EXPECT_EQ(read.at("names"), true) << read;
    EXPECT_EQ(read.at("missing").size(), 0U) << read;
    ASSERT_EQ(read.at("box").size(), 6U) << read;
    SbVec3f const size = scene.box.getMax() - scene.box.getMin();
    for (int i = 0; i < 6; ++i) {
        auto const expected = static_cast<double>(i < 3 ? scene.box.getMin()[i] : scene.box.getMax()[i - 3]);
        double const floats = 1e-7 * std::abs(expected); // the toolkit counts in them
        EXPECT_NEAR(read.at("box").at(static_cast<std::size_t>(i)).get<double>(), expected,
                    1e-3 * static_cast<double>(size.length()) + floats)
            << read;
    }
}

} // namespace

TEST_F(Flt2ivVrml, isReadByAnotherReaderAsTheSceneIsDrawn)
{
    if (!isReaderThere())
        GTEST_SKIP() << "this needs nodejs and libjs-three";
    std::vector<std::string> names;
    for (PictureDatabase const& feature : pictureDatabases()) {
        ScratchFolder const own;
        feature.write(own);
        convert("-q --lod highest", own / "model.flt", feature.name + ".iv");
        convert("-q --lod highest", own / "model.flt", feature.name + ".wrl");
        names.push_back(feature.name + ".wrl");
    }
    auto const read = readByAnother(names);
    ASSERT_EQ(read.size(), names.size());
    for (PictureDatabase const& feature : pictureDatabases()) {
        SCOPED_TRACE(feature.name);
        SceneSurvey const scene(sceneIn(folder / (feature.name + ".iv")).get());
        expectSame(read.at(feature.name + ".wrl"), scene);
    }
    EXPECT_GT(read.at("billboardsFromTheSouth.wrl").at("billboards"), 0);
    EXPECT_GT(read.at("lightModes.wrl").at("unlit"), 0);
    EXPECT_GT(read.at("texts.wrl").at("texts"), 0);
    EXPECT_GT(read.at("lights.wrl").at("lights"), 0);
}

TEST_F(Flt2ivVrml, ofTheSampleIsReadWholeByAnotherReader)
{
    if (!isReaderThere())
        GTEST_SKIP() << "this needs nodejs and libjs-three";
    ASSERT_EQ(ProgramRun("make_sample", folder / "airfield.flt").exitCode, 0);
    convert("--lod highest", folder / "airfield.flt", "scene.iv");
    convert("-q --lod highest", folder / "airfield.flt", "scene.wrl");
    convert("-q", folder / "airfield.flt", "levels.wrl");
    auto const read = readByAnother({"scene.wrl", "levels.wrl"});
    expectSame(read.at("scene.wrl"), SceneSurvey(sceneIn(folder / "scene.iv").get()));
    EXPECT_EQ(read.at("levels.wrl").at("triangles"), read.at("scene.wrl").at("triangles"));
    EXPECT_GT(read.at("levels.wrl").at("lods"), 0);
    EXPECT_GT(read.at("levels.wrl").at("switches"), 0);
}

TEST_F(Flt2ivVrml, ofTheExactConversionDoesNotStopAnotherReader)
{
    if (!isReaderThere())
        GTEST_SKIP() << "this needs nodejs and libjs-three";
    FltWriter flt;
    flt.vertexPalette();
    std::vector<double> corners;
    for (int i = 0; i < 3; ++i)
        corners.push_back(flt.vertex("VertexColor", i, i * i, 0));
    flt.push()
        .add("Group", {{"idASCII", "a+b"}})
        .add("Comment", {{"textDescription", "one \\ \n two"}})
        .push();
    for (char const* const name : {"o", "o"})
        flt.add("Object", {{"idASCII", name}}).push().face(corners).pop();
    convert("--exact", folder.write("a.flt", flt.pop().pop().bytes()), "exact.wrl");
    auto const read = readByAnother({"exact.wrl"});
    ASSERT_FALSE(read.at("exact.wrl").contains("problem")) << read.at("exact.wrl");
    EXPECT_EQ(read.at("exact.wrl").at("triangles"), 2);
}

TEST_F(Flt2ivVrml, hasLostPartsListed)
{
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 0, 0, 0), b = flt.vertex("VertexColor", 1, 0, 0);
    flt.push().add("LightPoint", {{"actualPixelSize", 9}}).push();
    flt.add("VertexList", {{"offsets", {a, b}}}).pop().pop();
    std::string const input = folder.write("a.flt", flt.bytes());
    EXPECT_NE(
        convert("", input, "a.wrl").find("a.flt: VRML97 has no form for some of it: sizes of points (1)"),
        std::string::npos);
    EXPECT_EQ(convert("-q", input, "a.wrl"), "");
    EXPECT_EQ(convert("", input, "a.iv"), "");
}

TEST_F(Flt2ivVrml, hasPicturesThatBrowsersRead)
{
    folder.write("models/tree.rgb", SmallPictures::plainSgi(4));
    SmallPictures::writeJpeg(folder.path("models/wall.jpg"), 2, 2, false);
    std::string const tree = folder.write("models/a.flt", SmallDatabase{{}, "tree.rgb"}.bytes());
    std::string const wall = folder.write("models/b.flt", SmallDatabase{{}, "wall.jpg"}.bytes());
    EXPECT_EQ(convert("", tree, "a.wrl"), "");
    EXPECT_EQ(convert("", wall, "b.wrl"), "");
    EXPECT_NE(contentsOf(folder / "a.wrl").find("\"a_textures/tree.png\""), std::string::npos);
    EXPECT_NE(contentsOf(folder / "b.wrl").find("\"models/wall.jpg\""), std::string::npos)
        << "it stays there";
    Picture const written = Picture::read(folder / "a_textures/tree.png");
    Picture const stored = Picture::read(folder / "models/tree.rgb");
    ASSERT_NE(written.pixels, nullptr) << written.problem;
    EXPECT_EQ(written.pixels->components, stored.pixels->components);
    EXPECT_EQ(written.pixels->bytes, stored.pixels->bytes);
    EXPECT_FALSE(std::filesystem::exists(folder / "b_textures"));
}

TEST_F(Flt2ivVrml, holdsPicturesThatCanNotStandBesideIt)
{
    folder.write("tree.rgb", SmallPictures::plainSgi(4));
    std::string const input = folder.write("a.flt", SmallDatabase{{}, "tree.rgb"}.bytes());
    EXPECT_NE(ProgramRun("flt2iv", "--to wrl " + input).output.find("PixelTexture"), std::string::npos);
    EXPECT_EQ(convert("--embed-textures", input, "a.wrl"), "");
    EXPECT_NE(contentsOf(folder / "a.wrl").find("PixelTexture"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder / "a_textures"));
}

TEST_F(Flt2ivVrml, leavesTexturesOfTheDatabaseAlone)
{
    std::string const other = folder.path("a_textures/tree.rgb");
    folder.write("a_textures/tree.rgb", SmallPictures::plainSgi(4));
    std::string const input = folder.write("a.flt", SmallDatabase{{}, "a_textures/tree.rgb"}.bytes());
    std::filesystem::create_hard_link(other, folder / "a_textures/tree.png");
    std::string const before = contentsOf(other);
    ProgramRun const run("flt2iv", "-o " + (folder / "a.wrl") + " " + input);
    EXPECT_EQ(contentsOf(other), before);
    EXPECT_EQ(run.exitCode, 2) << run.errors;
    EXPECT_FALSE(std::filesystem::exists(folder / "a.wrl"));
}

TEST_F(Flt2ivVrml, hasPicturesOfOneNameInFilesOfTheirOwn)
{
    folder.write("x/tree.rgb", SmallPictures::plainSgi(4));
    folder.write("y/tree.rgb", SmallPictures::plainSgi(8));
    folder.write("b.flt", SmallDatabase{{}, "y/tree.rgb"}.bytes());
    std::string const input = folder.write("a.flt", SmallDatabase{{"b.flt"}, "x/tree.rgb"}.bytes());
    EXPECT_EQ(convert("", input, "a.wrl"), "");
    std::string const text = contentsOf(folder / "a.wrl");
    EXPECT_NE(text.find("\"a_textures/tree.png\""), std::string::npos);
    EXPECT_NE(text.find("\"a_textures/tree-2.png\""), std::string::npos);
    Picture const second = Picture::read(folder / "a_textures/tree-2.png");
    ASSERT_NE(second.pixels, nullptr);
    EXPECT_EQ(second.pixels->width, 8);
}
