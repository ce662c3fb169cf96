#include "loader/FltLoader.h"

#include "support/OpenWatch.h"
#include "support/SceneText.h"
#include "support/ScratchFolder.h"
#include "support/SmallPictures.h"
#include "writer/FltWriter.h"

#include <Inventor/nodes/SoSeparator.h>
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

using References = FltLoader::References;
using Levels = FltLoader::LevelsOfDetail;
using Units = FltLoader::Units;
using Origin = FltLoader::Origin;

struct Mode {
    bool isExact;
    bool hasLog;
    References references;
    bool salvages;
    Units units;
    Levels levels;
    Origin origin;

    bool follows() const { return references == References::follow; }

    /// Whether records of external files get into the log. It knows no references as files.
    bool logsReferences() const { return hasLog && references != References::skip; }
};

/// All that FltLoader takes.
std::vector<Mode> modes()
{
    std::vector<Mode> modes;
    for (bool const isExact : {false, true})
        for (bool const hasLog : {false, true})
            for (References const references : {References::follow, References::skip, References::asFile})
                for (bool const salvages : {false, true})
                    for (Units const units : {Units::metres, Units::stored})
                        for (Levels const levels : {Levels::all, Levels::highest, Levels::lowest})
                            for (Origin const origin : {Origin::stored, Origin::centre})
                                if (!isExact || (references != References::asFile && units == Units::metres &&
                                                 levels == Levels::all && origin == Origin::stored))
                                    modes.push_back(
                                        {isExact, hasLog, references, salvages, units, levels, origin});
    return modes;
}

void PrintTo(Mode const& /*mode*/, std::ostream* /*os*/) {} // its test is named for it

std::string nameOf(testing::TestParamInfo<Mode> const& test)
{
    Mode const& mode = test.param;
    return std::string(mode.isExact ? "Exact" : "Complete") + (mode.hasLog ? "WithLog" : "") +
           (mode.follows()                        ? "Following"
            : mode.references == References::skip ? "Skipping"
                                                  : "AsFile") +
           (mode.salvages ? "Salvaging" : "") + (mode.units == Units::stored ? "Stored" : "") +
           (mode.levels == Levels::highest  ? "Highest"
            : mode.levels == Levels::lowest ? "Lowest"
                                            : "") +
           (mode.origin == Origin::centre ? "Centred" : "");
}

/// A database in a folder "inside" that refers to two others in it, one of them large, and to one outside;
/// and to textures of both folders.
class SafetyOptionsTest : public testing::TestWithParam<Mode>
{
protected:
    SafetyOptionsTest()
    {
        Mode const& mode = GetParam();
        loader.exact = mode.isExact;
        loader.references = mode.references;
        loader.salvage = mode.salvages;
        loader.units = mode.units;
        loader.levelsOfDetail = mode.levels;
        loader.origin = mode.origin;
        if (mode.hasLog)
            loader.log = folder / "log.txt";
        folder.write("inside/near.rgb", SmallPictures::plainSgi(4));
        folder.write("outside/far.rgb", SmallPictures::plainSgi(4));
        std::filesystem::create_symlink(folder / "outside/far.rgb", folder / "inside/link.rgb");
        save("inside/part.flt", group("GPart", 1));
        save("inside/large.flt", group("GLarge", 100));
        save("outside/far.flt", group("GFar", 1));
        save("inside/a.flt", database());
    }

    static FltWriter group(std::string const& name, int count)
    {
        FltWriter flt;
        flt.push();
        for (int i = 0; i < count; ++i)
            flt.add("Group", {{"idASCII", name}}).push().pop();
        flt.pop();
        return flt;
    }

    FltWriter database() const
    {
        FltWriter flt;
        for (std::string const& texture : textures)
            flt.add("TexturePattern", {{"fileName", texture}, {"patternIndex", &texture - textures.data()}});
        flt.vertexPalette();
        std::vector<double> corners;
        for (int const y : {0, 0, 1})
            corners.push_back(
                static_cast<double>(flt.vertex("VertexColorUv", corners.empty() ? 0 : 1, y, 0)));
        flt.push();
        for (int texture = 0; texture < 4; ++texture) {
            flt.add("Object").push();
            flt.face(corners, {{"texturePatternIndex", texture}, {"materialIndex", -1}});
            flt.pop();
        }
        for (char const* const name : {"part.flt", "large.flt", "../outside/far.flt"})
            flt.add("ExternalReference", {{"asciiPath", name}}).add("Group");
        return flt.pop();
    }

    void save(std::string const& name, FltWriter const& flt) const { flt.save(folder.path(name)); }

    FltScene load() const { return loader.load(path); }

    std::string log() const { return contentsOf(folder / "log.txt"); }

    bool isInLog(std::string const& text) const { return log().find(text) != std::string::npos; }

    static bool isInScene(FltScene const& scene, std::string const& text)
    {
        return sceneText(scene.root()).find(text) != std::string::npos;
    }

    /// How many messages are about a file.
    static int messagesAbout(FltScene const& scene, std::string const& file)
    {
        return static_cast<int>(
            std::count_if(scene.messages().begin(), scene.messages().end(), [&](FltMessage const& message) {
                return message.text.find(file) != std::string::npos;
            }));
    }

    /// What has to be the same whether the one file may be read or not.
    void expectTheRest(FltScene const& scene) const
    {
        ASSERT_EQ(scene.references().size(), 3U);
        ASSERT_EQ(scene.textures().size(), textures.size());
        EXPECT_EQ(scene.references()[0].isLoaded, GetParam().follows());
        EXPECT_EQ(scene.textures()[0].path, folder / "inside/near.rgb");
        EXPECT_EQ(isInLog("GPart"), GetParam().logsReferences());
        EXPECT_EQ(isInScene(scene, "part.flt"),
                  GetParam().references == References::asFile || GetParam().isExact);
    }

    ScratchFolder folder;
    /// One inside, and one outside by its place, behind a link, and by its whole name.
    std::vector<std::string> const textures = {"near.rgb", "../outside/far.rgb", "link.rgb",
                                               folder / "outside/far.rgb"};
    std::string const path = folder / "inside/a.flt";
    FltLoader loader;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(, SafetyOptionsTest, testing::ValuesIn(modes()), nameOf);

TEST_P(SafetyOptionsTest, WithoutThemAllIsRead)
{
    OpenWatch far(folder / "outside");
    OpenWatch large(folder / "inside/large.flt");
    FltScene const scene = load();
    expectTheRest(scene);
    for (std::size_t const reference : {1U, 2U})
        EXPECT_EQ(scene.references()[reference].isLoaded, GetParam().follows());
    for (std::size_t const texture : {1U, 2U, 3U})
        EXPECT_NE(scene.textures()[texture].path, "") << textures[texture];
    EXPECT_EQ(isInLog("GFar"), GetParam().logsReferences());
    EXPECT_EQ(isInLog("GLarge"), GetParam().logsReferences());
    EXPECT_TRUE(far.wasOpened()) << "at least the texture";
    EXPECT_EQ(large.wasOpened(), GetParam().references != References::skip);
    EXPECT_TRUE(scene.messages().empty());
}

TEST_P(SafetyOptionsTest, OnlyBelowKeepsTheLoadInItsDirectory)
{
    loader.onlyBelow = folder / "inside";
    OpenWatch far(folder / "outside");
    FltScene const scene = load();
    EXPECT_FALSE(far.wasOpened());
    expectTheRest(scene);
    EXPECT_EQ(scene.references()[1].isLoaded, GetParam().follows());
    EXPECT_FALSE(scene.references()[2].isLoaded);
    for (std::size_t const texture : {1U, 2U, 3U}) {
        EXPECT_EQ(scene.textures()[texture].path, "") << textures[texture];
        EXPECT_EQ(messagesAbout(scene, "Texture " + textures[texture] + " isn't shown"), 1);
    }
    EXPECT_EQ(messagesAbout(scene, "isn't below"), GetParam().references == References::skip ? 0 : 1);
    EXPECT_FALSE(isInLog("GFar"));
    EXPECT_EQ(isInLog("GLarge"), GetParam().logsReferences());
    EXPECT_FALSE(isInScene(scene, "GFar"));
    EXPECT_FALSE(!GetParam().isExact && isInScene(scene, "far.flt")) << "no node opens it later";
}

TEST_P(SafetyOptionsTest, LargestFileKeepsALargerExternalFileOut)
{
    loader.largestFile = std::filesystem::file_size(folder / "inside/large.flt") - 1;
    ASSERT_LE(std::filesystem::file_size(path), loader.largestFile);
    FltScene const scene = load();
    expectTheRest(scene);
    EXPECT_FALSE(scene.references()[1].isLoaded);
    EXPECT_EQ(scene.references()[2].isLoaded, GetParam().follows());
    EXPECT_EQ(messagesAbout(scene, "more than are allowed"),
              GetParam().references == References::skip ? 0 : 1);
    EXPECT_FALSE(isInLog("GLarge"));
    EXPECT_EQ(isInLog("GFar"), GetParam().logsReferences());
    EXPECT_FALSE(isInScene(scene, "GLarge"));
    EXPECT_FALSE(!GetParam().isExact && isInScene(scene, "large.flt")) << "no node opens it later";
}

/// Each picture was read, however large it was.
TEST_P(SafetyOptionsTest, LargestFileKeepsALargerPictureOut)
{
    folder.write("inside/near.rgb", SmallPictures::plainSgi(200));
    loader.largestFile = std::filesystem::file_size(folder / "inside/near.rgb") - 1;
    ASSERT_LE(std::filesystem::file_size(path), loader.largestFile);
    FltScene const scene = load();
    EXPECT_EQ(scene.textures()[0].path, "");
    EXPECT_EQ(messagesAbout(scene, "Texture near.rgb isn't shown"), 1);
    EXPECT_EQ(messagesAbout(scene, "more than are allowed. Allow larger files"), 1);
    for (std::size_t const texture : {1U, 2U, 3U})
        EXPECT_NE(scene.textures()[texture].path, "") << textures[texture];
}

TEST_P(SafetyOptionsTest, TellsOfAPictureThatIsShownInPart)
{
    SmallPictures::writeJpeg(folder.path("cut.jpg"), 64, 64, false);
    std::string const bytes = contentsOf(folder / "cut.jpg");
    std::filesystem::remove(folder / "inside/near.rgb");
    folder.write("inside/near.jpg", bytes.substr(0, bytes.size() / 2 + 100));
    FltScene const scene = load();
    EXPECT_EQ(scene.textures()[0].path, folder / "inside/near.jpg");
    EXPECT_EQ(messagesAbout(scene, "Texture near.rgb is shown in part: " + (folder / "inside/near.jpg") +
                                       " is a damaged JPEG picture (Premature end of JPEG file). Save it"),
              1);
}

TEST_P(SafetyOptionsTest, LargestFileRefusesALargerDatabase)
{
    loader.largestFile = std::filesystem::file_size(path) - 1;
    try {
        static_cast<void>(load());
        ADD_FAILURE() << "it was loaded";
    } catch (FltLoadError const& error) {
        EXPECT_EQ(error.kind(), FltLoadError::Kind::refused);
    }
    EXPECT_FALSE(std::filesystem::exists(folder / "log.txt"));
}

TEST_P(SafetyOptionsTest, ProgressIsToldByEachPassAndCanCancelItAnywhere)
{
    int calls = 0;
    int ends = 0;
    std::uint64_t doneBefore = 0;
    loader.progress = [&](std::string const& file, std::uint64_t done, std::uint64_t inAll) {
        ++calls;
        ends += file == path && done == inAll && done != doneBefore ? 1 : 0;
        doneBefore = done;
        return true;
    };
    static_cast<void>(load());
    EXPECT_EQ(ends, GetParam().hasLog && !GetParam().isExact ? 2 : 1) << "the log has a pass of its own";
    int const all = calls;
    for (int last = 1; last <= all; ++last) {
        calls = 0;
        loader.progress = [&](std::string const&, std::uint64_t, std::uint64_t) { return ++calls < last; };
        try {
            static_cast<void>(load());
            ADD_FAILURE() << "call " << last << " of " << all << " didn't end it";
        } catch (FltLoadError const& error) {
            EXPECT_EQ(error.kind(), FltLoadError::Kind::cancelled) << last;
        }
        EXPECT_EQ(calls, last);
    }
}

TEST_P(SafetyOptionsTest, WhatProgressThrowsInThePassOfTheLogComesOutAsItIs)
{
    loader.progress = [](std::string const&, std::uint64_t, std::uint64_t) -> bool { throw 5; };
    EXPECT_THROW(static_cast<void>(load()), int);
}
