#include "textures/FltTextureFiles.h"

#include "support/ExchangedFolders.h"
#include "support/MadeAttributes.h"
#include "support/ScratchFolder.h"
#include "support/SmallPictures.h"

#include <gtest/gtest.h>

namespace
{

/// In a process in which the toolkit isn't started.
class FltTextureFilesTest : public testing::Test
{
protected:
    FltTexture const& resolve(std::string const& name)
    {
        return files.resolve(name, database, [this](std::string const& path) { read.push_back(path); });
    }

    ScratchFolder const folder;
    std::string const database = folder / "a.flt";
    FltTextureFiles files{database};
    std::vector<std::string> read;
};

} // namespace

TEST_F(FltTextureFilesTest, TellsWhereAPictureIsAndWhatItShows)
{
    folder.write("tree.rgb", SmallPictures::plainSgi(4, 77));
    FltTexture const& found = resolve("tree.rgb");
    EXPECT_EQ(found.name, "tree.rgb");
    EXPECT_EQ(found.database, database);
    EXPECT_EQ(found.path, folder / "tree.rgb");
    EXPECT_EQ(found.written, folder / "tree.rgb");
    EXPECT_TRUE(found.tried.empty());
    ASSERT_NE(found.pixels, nullptr);
    EXPECT_EQ(found.pixels->width, 4);
    EXPECT_EQ(found.pixels->height, 4);
    EXPECT_EQ(found.pixels->components, 3);
    EXPECT_EQ(found.pixels->bytes, std::vector<unsigned char>(48, 77));
}

TEST_F(FltTextureFilesTest, TellsWhatOfAPictureIsLost)
{
    SmallPictures::writeJpeg(folder.path("whole.jpg"), 64, 64, false);
    std::string const bytes = contentsOf(folder / "whole.jpg");
    folder.write("cut.jpg", bytes.substr(0, bytes.size() - 20));
    FltTexture const& cut = resolve("cut.jpg");
    EXPECT_NE(cut.pixels, nullptr);
    EXPECT_EQ(cut.damage, "is a damaged JPEG picture (Premature end of JPEG file)");
    EXPECT_EQ(cut.advice, Picture::advice);
    EXPECT_EQ(resolve("whole.jpg").damage + resolve("whole.jpg").advice, "");
}

TEST_F(FltTextureFilesTest, ReadsNoPictureThatIsLargerThanItMayBe)
{
    std::string const bytes = SmallPictures::plainSgi(4);
    folder.write("tree.rgb", bytes);
    for (std::size_t const most : {bytes.size() - 1, bytes.size()}) {
        FltTextureFiles bounded(database, {}, std::nullopt, FltReadableTree(), most);
        FltTexture const& texture = bounded.resolve("tree.rgb", database);
        if (most == bytes.size()) {
            EXPECT_NE(texture.pixels, nullptr);
            continue;
        }
        EXPECT_EQ(texture.pixels, nullptr);
        EXPECT_EQ(texture.unreadable, folder / "tree.rgb");
        EXPECT_EQ(texture.problem, "has " + std::to_string(bytes.size()) + " bytes, more than are allowed");
        EXPECT_EQ(texture.advice, "Allow larger files, or save it smaller.");
    }
}

TEST_F(FltTextureFilesTest, AdvisesOnTheFormatOfAFileThatIsAsLargeAsItMayBe)
{
    std::string const bytes = "no picture";
    folder.write("tree.rgb", bytes);
    FltTextureFiles bounded(database, {}, std::nullopt, FltReadableTree(), bytes.size());
    EXPECT_EQ(bounded.resolve("tree.rgb", database).advice, Picture::advice);
}

TEST_F(FltTextureFilesTest, TakesASmallerFormatOfAPictureThatIsTooLarge)
{
    folder.write("tree.rgb", SmallPictures::plainSgi(60));
    SmallPictures::writePng(folder.path("tree.png"), 2, 2);
    FltTextureFiles bounded(database, {}, std::nullopt, FltReadableTree(), 1000);
    EXPECT_EQ(bounded.resolve("tree.rgb", database).path, folder / "tree.png");
}

TEST_F(FltTextureFilesTest, TellsWhatStandsBesideAPicture)
{
    folder.write("sub/tree.rgb", SmallPictures::plainSgi(4));
    folder.write("sub/tree.rgb.attr", madeAttributes({{36, 1}, {60, 3}}));
    FltTexture const& found = resolve("sub\\tree.rgb");
    EXPECT_EQ(found.attributes.path, folder / "sub/tree.rgb.attr");
    EXPECT_EQ(found.attributes.wrapU, FltTextureAttributes::Wrap::clamp);
    EXPECT_EQ(found.attributes.environment, FltTextureAttributes::Environment::replace);
    EXPECT_EQ(resolve("other.rgb").attributes.path, "");
}

TEST_F(FltTextureFilesTest, ShowsAPictureWhateverIsWrongWithItsAttributes)
{
    folder.write("tree.rgb", SmallPictures::plainSgi(4));
    folder.write("tree.rgb.attr", "short");
    EXPECT_NE(resolve("tree.rgb").pixels, nullptr);
    EXPECT_EQ(resolve("tree.rgb").attributes.problems.size(), 1U);
}

TEST_F(FltTextureFilesTest, LooksForATextureOnce)
{
    folder.write("tree.rgb", SmallPictures::plainSgi(4));
    FltTexture const* const first = &resolve("tree.rgb");
    FltTexture const* const missing = &resolve("none.rgb");
    EXPECT_EQ(&resolve("tree.rgb"), first);
    EXPECT_EQ(&resolve("none.rgb"), missing);
    EXPECT_EQ(read, std::vector<std::string>{folder / "tree.rgb"});
    std::filesystem::remove(folder / "tree.rgb");
    EXPECT_EQ(resolve("tree.rgb").path, folder / "tree.rgb");
}

TEST_F(FltTextureFilesTest, LooksForTheSameNameFromEachDatabase)
{
    folder.write("one/tree.rgb", SmallPictures::plainSgi(1));
    folder.write("two/tree.rgb", SmallPictures::plainSgi(2));
    EXPECT_EQ(files.resolve("tree.rgb", folder / "one/b.flt").path, folder / "one/tree.rgb");
    EXPECT_EQ(files.resolve("tree.rgb", folder / "two/b.flt").path, folder / "two/tree.rgb");
}

TEST_F(FltTextureFilesTest, ReadsAPictureOnceHoweverManyNamesItHas)
{
    folder.write("tree.rgb", SmallPictures::plainSgi(4));
    std::shared_ptr<PicturePixels const> const pixels = resolve("tree.rgb").pixels;
    ASSERT_NE(pixels, nullptr);
    for (char const* const name : {"./tree.rgb", "TREE.RGB", "x/tree.png"})
        EXPECT_EQ(resolve(name).pixels, pixels) << name;
}

TEST_F(FltTextureFilesTest, ReadsNoPictureThatItsFileCantHold)
{
    std::string bytes = SmallPictures::plainSgi(2);
    bytes.replace(6, 4, "\xff\xff\xff\xff");
    folder.write("huge.rgb", bytes);
    FltTexture const& huge = resolve("huge.rgb");
    EXPECT_EQ(huge.unreadable, folder / "huge.rgb");
    EXPECT_EQ(huge.pixels, nullptr);
}

TEST_F(FltTextureFilesTest, KeepsTheNameOfWhatIsMissingOrNoPicture)
{
    std::string const text = folder.write("text.rgb", "no picture");
    FltTexture const& missing = resolve("none.rgb");
    EXPECT_EQ(missing.path, "");
    EXPECT_FALSE(missing.tried.empty());
    EXPECT_EQ(missing.unreadable, "");
    EXPECT_EQ(missing.written, "none.rgb");
    FltTexture const& bad = resolve("text.rgb");
    EXPECT_EQ(bad.path, "");
    EXPECT_EQ(bad.unreadable, text);
    EXPECT_EQ(bad.problem, "is no picture of a kind that is read");
    EXPECT_EQ(bad.written, "text.rgb");
}

TEST_F(FltTextureFilesTest, TakesAnotherFormatWhereTheStoredOneCannotBeRead)
{
    folder.write("tree.dds", "a format that is not known");
    folder.write("tree.rgb", SmallPictures::plainSgi(4));
    FltTexture const& found = resolve("tree.dds");
    EXPECT_EQ(found.path, folder / "tree.rgb");
    EXPECT_EQ(found.unreadable, "");
    EXPECT_EQ(found.problem, "");
    EXPECT_NE(found.pixels, nullptr);
}

TEST_F(FltTextureFilesTest, NamesAPictureFromTheDirectoryThatItIsToldOf)
{
    folder.write("images/tree.rgb", SmallPictures::plainSgi(4));
    FltTextureFiles named(database, {}, folder / "scenes");
    EXPECT_EQ(named.resolve("tree.rgb", database).written, "../images/tree.rgb");
}

TEST_F(FltTextureFilesTest, ReadsThePictureThatItFoundWhateverTakesItsNameMeanwhile)
{
    ExchangedFolders const folders;
    folders.folder.write("tree/part/tree.rgb", SmallPictures::plainSgi(4));
    folders.folder.write("outside/tree.rgb", SmallPictures::plainSgi(8));
    std::string const inTree = folders.tree() + "/a.flt";
    FltTextureFiles limited(inTree, {}, std::nullopt, FltReadableTree(folders.tree()));
    FltTexture const& found =
        limited.resolve("part/tree.rgb", inTree, [&](std::string const&) { folders.exchange(); });
    ASSERT_NE(found.pixels, nullptr);
    EXPECT_EQ(found.pixels->width, 4);
}
