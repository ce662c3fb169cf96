// The forms in which flt2iv writes a scene.

#include "ProgramRun.h"
#include "SmallDatabases.h"
#include "pictures/PictureDatabases.h"
#include "support/SmallPictures.h"
#include "support/Text.h"

#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoTexture2.h>
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace
{

std::vector<double> moved(double x, double y)
{
    return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, 0, 1};
}

class Flt2ivForms : public testing::Test
{
protected:
    std::string database(SmallDatabase const& small = {}) const
    {
        return folder.write("models/a.flt", small.bytes());
    }

    /// Converts into a file, which has to go well.
    std::string converted(std::string const& options, std::string const& input, std::string const& name) const
    {
        ProgramRun const run("flt2iv", options + " -o " + (folder / name) + " " + input);
        EXPECT_EQ(run.exitCode, 0) << options << run.errors;
        bool const isVrml =
            std::filesystem::path(name).extension() == ".wrl"; // tells what it has no form for
        EXPECT_TRUE(run.errors.empty() || isVrml) << options << run.errors;
        return folder / name;
    }

    /// A triangle in a row of copies, which stands in another row if @p isNested.
    static std::string replicated(bool isNested)
    {
        FltWriter flt;
        flt.vertexPalette();
        std::vector<double> corners;
        for (int i = 0; i < 3; ++i)
            corners.push_back(flt.vertex("VertexColor", i, i * i, 0));
        flt.push().add("InstanceDefinition", {{"instanceDefinitionNumber", 1}}).push();
        flt.add("Object", {{"idASCII", "o"}}).push().face(corners).pop().pop();
        for (int row = 0; row < 2; ++row) {
            flt.add("Group", {{"idASCII", "row"}});
            if (isNested && row == 0)
                flt.add("Replicate", {{"numberOfReplications", 10}}).add("Matrix", {{"matrix", moved(0, 5)}});
            flt.push().add("InstanceReference", {{"instanceDefinitionNumber", 1}});
            flt.add("Replicate", {{"numberOfReplications", 20}}).add("Matrix", {{"matrix", moved(3, 0)}});
            flt.pop();
        }
        return flt.pop().bytes();
    }

    ScratchFolder folder;
};

/// The width of the only texture in a scene file; 0 if it has no pixels.
int widthOfTexture(std::string const& file)
{
    SoNodeRef<SoSeparator> const root = sceneIn(file);
    SoSearchAction search;
    search.setType(SoTexture2::getClassTypeId());
    search.apply(root.get());
    if (search.getPath() == nullptr)
        return -1;
    SbVec2s size(0, 0);
    int components = 0;
    static_cast<SoTexture2*>(search.getPath()->getTail())->image.getValue(size, components);
    return size[0];
}

/// The database that make_sample writes.
std::string sampleIn(ScratchFolder const& folder)
{
    EXPECT_EQ(ProgramRun("make_sample", folder / "airfield.flt").exitCode, 0);
    return folder / "airfield.flt";
}

} // namespace

TEST_F(Flt2ivForms, drawAsManyTrianglesOfTheSampleInEach)
{
    std::string const sample = sampleIn(folder);
    int const triangles = trianglesIn(converted("", sample, "plain.iv"));
    EXPECT_GT(triangles, 10'000);
    for (char const* const options : {"-b", "-z", "-b -z", "--embed-textures", "-b --embed-textures"})
        EXPECT_EQ(trianglesIn(converted(options, sample, "other.iv")), triangles) << options;
    for (char const* const options : {"", "-z", "--embed-textures"})
        EXPECT_EQ(trianglesIn(converted(options, sample, "other.wrl")), triangles) << options;
    int const exactly = trianglesIn(converted("--exact", sample, "exact.iv"));
    EXPECT_EQ(trianglesIn(converted("--exact", sample, "exact.wrl")), exactly);
}

TEST_F(Flt2ivForms, drawAllCopiesInTheirPlaces)
{
    for (bool const isNested : {false, true}) {
        std::string const input = folder.write("copies.flt", replicated(isNested));
        std::string const iv = converted("", input, "copies.iv"), vrml = converted("", input, "copies.wrl");
        DrawnScene const expected(sceneIn(iv).get()), drawn(sceneIn(vrml).get());
        EXPECT_EQ(drawn.triangles.size(), isNested ? 21U * 11 + 21 : 2U * 21);
        EXPECT_EQ(expected.triangles.size(), drawn.triangles.size());
        EXPECT_EQ(expected.extent(), drawn.extent());
    }
}

TEST_F(Flt2ivForms, writeOutCopiesAroundOneSharedPart)
{
    std::string const text = contentsOf(converted("", folder.write("a.flt", replicated(true)), "copies.wrl"));
    EXPECT_EQ(countOf(text, "Transform {"), 2 * 20 + 10)
        << "two groups of copies, one below the other's copies; the first of each stays where it is";
    EXPECT_EQ(countOf(text, "IndexedFaceSet {"), 1);
}

TEST_F(Flt2ivForms, drawAsManyTrianglesOfEachFeatureInVrml)
{
    for (PictureDatabase const& feature : pictureDatabases()) {
        ScratchFolder const own;
        feature.write(own);
        for (char const* const name : {"out.iv", "out.wrl"})
            EXPECT_EQ(ProgramRun("flt2iv", "-o " + (own / name) + " " + (own / "model.flt")).exitCode, 0);
        EXPECT_GT(trianglesIn(own / "out.iv"), 0) << feature.name;
        EXPECT_EQ(trianglesIn(own / "out.wrl"), trianglesIn(own / "out.iv")) << feature.name;
    }
}

TEST_F(Flt2ivForms, beginAsTheirReadersExpect)
{
    std::string const input = database();
    EXPECT_EQ(ProgramRun("flt2iv", "-z " + input).output.substr(0, 2), "\x1f\x8b");
    EXPECT_EQ(ProgramRun("flt2iv", "--to wrl " + input).output.substr(0, 15), "#VRML V2.0 utf8");
    EXPECT_EQ(contentsOf(converted("", input, "a.WRL")).substr(0, 15), "#VRML V2.0 utf8");
}

TEST_F(Flt2ivForms, areTheSameInAPipeAsInAFile)
{
    std::string const input = database();
    for (char const* const options : {"", "-b", "-z", "-b -z"}) {
        std::string const pipe = std::string(VELLOREADER_PROGRAMS "flt2iv ") + options + " " + input +
                                 " | cat >" + (folder / "pipe.iv");
        EXPECT_EQ(WEXITSTATUS(std::system(pipe.c_str())), 0);
        EXPECT_EQ(contentsOf(folder / "pipe.iv"), contentsOf(converted(options, input, "file.iv")))
            << options;
        EXPECT_EQ(trianglesIn(folder / "pipe.iv"), 1) << options;
    }
}

TEST_F(Flt2ivForms, compressToMuchLess)
{
    std::string const sample = sampleIn(folder);
    EXPECT_LT(contentsOf(converted("-z", sample, "a.iv")).size(),
              contentsOf(converted("", sample, "b.iv")).size() / 4);
}

TEST_F(Flt2ivForms, holdThePixelsOfTexturesOnRequest)
{
    std::string const image = folder.write("models/tree.rgb", SmallPictures::plainSgi(4));
    std::string const input = database({{}, "tree.rgb"});
    std::string const named = converted("", input, "named.iv");
    std::string const embedded = converted("--embed-textures", input, "embedded.iv");
    std::string const vrml = converted("--embed-textures", input, "embedded.wrl");
    EXPECT_NE(contentsOf(named).find("models/tree.rgb"), std::string::npos);
    EXPECT_EQ(contentsOf(embedded).find("tree.rgb"), std::string::npos);
    EXPECT_EQ(widthOfTexture(named), 4);
    EXPECT_EQ(widthOfTexture(converted("-b --embed-textures", input, "binary.iv")), 4);
    std::filesystem::remove(image);
    EXPECT_EQ(widthOfTexture(embedded), 4) << "the file needs no other";
    EXPECT_NE(contentsOf(vrml).find("PixelTexture"), std::string::npos);
}

TEST_F(Flt2ivForms, keepTheNameOfATextureThatIsNotThere)
{
    ProgramRun const run("flt2iv", "--embed-textures " + database({{}, "lost.rgb"}));
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_NE(run.output.find("lost.rgb"), std::string::npos);
    EXPECT_NE(run.errors.find("Texture lost.rgb isn't shown"), std::string::npos);
}

TEST_F(Flt2ivForms, areInMetresOrInTheUnitOfTheDatabase)
{
    std::string const feet = database({{}, "", 4});
    EXPECT_EQ(DrawnScene(sceneIn(converted("", feet, "a.iv")).get()).extent(), "0 0 0 to 0.305 0.305 0");
    EXPECT_EQ(DrawnScene(sceneIn(converted("--units stored", feet, "b.iv")).get()).extent(),
              "0 0 0 to 1 1 0");
}

TEST_F(Flt2ivForms, areWhereTheDatabaseIsOrAboutZero)
{
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 4'500'000.3, 5'300'000.7, 0),
                 b = flt.vertex("VertexColor", 4'500'002.3, 5'300'000.7, 0),
                 c = flt.vertex("VertexColor", 4'500'000.3, 5'300'002.7, 0);
    flt.push().add("Object").push().face({a, b, c}).pop().pop();
    std::string const input = folder.write("far.flt", flt.bytes());
    std::string const stored = converted("", input, "a.iv");
    EXPECT_EQ(contentsOf(stored).find("offset"), std::string::npos);
    EXPECT_EQ(DrawnScene(sceneIn(stored).get()).extent().substr(0, 4), "4.5e");
    std::string const centred = converted("--origin centre", input, "b.iv");
    EXPECT_NE(contentsOf(centred).find("offset 4500001.5 5300001.5 0"), std::string::npos);
    EXPECT_EQ(DrawnScene(sceneIn(centred).get()).extent(), "-1.2 -0.8 0 to 0.8 1.2 0");
    ProgramRun const exact("flt2iv", "--exact --origin centre " + input);
    EXPECT_EQ(exact.exitCode, 2);
    EXPECT_NE(exact.errors.find("--origin centre"), std::string::npos);
}

TEST_F(Flt2ivForms, haveTheNamesOfAllNodesOrOfSomeOrOfNone)
{
    FltWriter flt;
    flt.push();
    for (char const* const name : {"tower", "wall", "wall"})
        flt.add("Group", {{"idASCII", name}});
    std::string const input = folder.write("named.flt", flt.pop().bytes());
    auto const namesIn = [&](std::string const& options) {
        std::string const text = contentsOf(converted(options, input, "a.iv"));
        auto const has = [&](std::string const& name) {
            return text.find("DEF " + name) != std::string::npos;
        };
        return std::string(has("tower") ? "tower " : "") + (has("wall") ? "wall" : "");
    };
    EXPECT_EQ(namesIn(""), "tower wall");
    EXPECT_EQ(namesIn("--names all"), "tower wall");
    EXPECT_EQ(namesIn("--names unique"), "tower ");
    EXPECT_EQ(namesIn("--names none"), "");
    for (char const* const option : {"--names none", "--names unique", "--merge"}) {
        ProgramRun const exact("flt2iv", std::string("--exact ") + option + " " + input);
        EXPECT_EQ(exact.exitCode, 2) << option;
        EXPECT_NE(exact.errors.find(std::string(option).substr(0, 7)), std::string::npos) << exact.errors;
    }
    EXPECT_EQ(ProgramRun("flt2iv", "--names some " + input).exitCode, 2);
}

TEST_F(Flt2ivForms, haveStatistics)
{
    std::string const input = database();
    ProgramRun const toFile("flt2iv", "--stat -o " + (folder / "a.iv") + " " + input);
    EXPECT_EQ(toFile.errors, "");
    EXPECT_EQ(std::count(toFile.output.begin(), toFile.output.end(), '\n'), 2);
    EXPECT_NE(toFile.output.find("nodes        faces    triangles  textures"), std::string::npos);
    EXPECT_NE(toFile.output.find(std::to_string(std::filesystem::file_size(folder / "a.iv"))),
              std::string::npos)
        << "the bytes that were written";
    EXPECT_NE(toFile.output.find(" 1            1         0"), std::string::npos)
        << "a face, a triangle, no texture";
    ProgramRun const toOutput("flt2iv", "--stat " + input);
    EXPECT_EQ(toOutput.output, contentsOf(folder / "a.iv")) << "the scene alone";
    EXPECT_NE(toOutput.errors.find("triangles"), std::string::npos);
}

TEST_F(Flt2ivForms, thatDoNotGoTogetherAreWrongUsage)
{
    std::string const input = database();
    for (std::string const& options :
         {std::string("-b --to wrl"), "--to iv -o " + (folder / "a.wrl"), "--to wrl -o " + (folder / "a.iv"),
          "-b -o " + (folder / "a.wrl"), std::string("--to obj"), std::string("--units yards")}) {
        ProgramRun const run("flt2iv", options + " " + input);
        EXPECT_EQ(run.exitCode, 2) << options;
        EXPECT_EQ(run.output, "") << options;
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "a.wrl"));
}
