#include "search/FltTextureSearch.h"

#include "support/ScratchFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace
{

class FltTextureSearchTest : public testing::Test
{
protected:
    /// What is found for a name in a database of the folder "db", relative to the scratch folder.
    std::string find(std::string const& name, std::vector<std::string> const& directories = {})
    {
        std::vector<std::string> paths;
        for (std::string const& directory : directories)
            paths.push_back(folder / directory);
        FltTextureSearch search(paths);
        FltTextureSearch::Result const result =
            search.find(name, {folder / "db/"}, [this](std::string const& path) {
                offered.push_back(path);
                return path != unfit;
            });
        tried = result.tried;
        std::string const root = folder / "";
        return result.path.compare(0, root.size(), root) == 0 ? result.path.substr(root.size()) : result.path;
    }

    void make(std::string const& name) const { folder.write(name, "image"); }

    ScratchFolder folder;
    std::string unfit;
    std::vector<std::string> offered;
    std::vector<std::string> tried;
};

} // namespace

TEST_F(FltTextureSearchTest, FindsAPathAsStored)
{
    make("db/tex/tree.rgb");
    make("far/tree.rgb");
    EXPECT_EQ(find("tex/tree.rgb"), "db/tex/tree.rgb");
    EXPECT_EQ(find("./tex//tree.rgb"), "db/tex/tree.rgb");
    EXPECT_EQ(find(folder / "far/tree.rgb"), "far/tree.rgb");
    EXPECT_EQ(find("../far/tree.rgb"), "db/../far/tree.rgb");
    EXPECT_TRUE(tried.empty());
}

TEST_F(FltTextureSearchTest, TurnsSlashes)
{
    make("db/tex/tree.rgb");
    EXPECT_EQ(find("tex\\tree.rgb"), "db/tex/tree.rgb");
    EXPECT_EQ(find(".\\tex\\tree.rgb"), "db/tex/tree.rgb");
    make("db/odd\\name.rgb");
    EXPECT_EQ(find("odd\\name.rgb"), "db/odd\\name.rgb") << "a backslash is a letter like others";
}

TEST_F(FltTextureSearchTest, FindsTheLongestTailUnderAnyDirectory)
{
    make("lib/textures/tree.rgb");
    make("lib/tree.rgb");
    EXPECT_EQ(find("C:\\models\\textures\\tree.rgb", {"lib"}), "lib/textures/tree.rgb");
    EXPECT_EQ(find("/home/somebody/textures/tree.rgb", {"lib"}), "lib/textures/tree.rgb");
    EXPECT_EQ(find("../../tree.rgb", {"lib"}), "lib/tree.rgb");
    EXPECT_EQ(find("/other/tree.rgb", {"lib"}), "lib/tree.rgb");
}

TEST_F(FltTextureSearchTest, PrefersTheOwnDirectoryAndThenTheOrderOfTheOthers)
{
    make("a/tree.rgb");
    make("b/tree.rgb");
    EXPECT_EQ(find("tree.rgb", {"b", "a"}), "b/tree.rgb");
    make("db/tree.rgb");
    EXPECT_EQ(find("tree.rgb", {"b", "a"}), "db/tree.rgb");
}

TEST_F(FltTextureSearchTest, LooksIntoFoldersOfImages)
{
    make("db/textures/tree.rgb");
    EXPECT_EQ(find("tree.rgb"), "db/textures/tree.rgb");
    EXPECT_EQ(find("D:/x/tree.rgb"), "db/textures/tree.rgb");
}

TEST_F(FltTextureSearchTest, DisregardsCaseIfNothingElseFits)
{
    make("db/Tex/TREE.RGB");
    EXPECT_EQ(find("tex/tree.rgb"), "db/Tex/TREE.RGB");
    make("db/tex/tree.rgb");
    EXPECT_EQ(find("tex/tree.rgb"), "db/tex/tree.rgb");
}

TEST_F(FltTextureSearchTest, TriesOtherEndingsLast)
{
    make("db/tree.png");
    EXPECT_EQ(find("tree.rgb"), "db/tree.png");
    EXPECT_EQ(find("x/tree"), "db/tree.png");
    make("db/TREE.RGB");
    EXPECT_EQ(find("tree.rgb"), "db/TREE.RGB");
    EXPECT_EQ(find("tree.doc"), "db/tree.png");
    EXPECT_EQ(find("tre.rgb"), "");
}

TEST_F(FltTextureSearchTest, GoesOnAfterAFileThatWillNotDo)
{
    make("db/tree.dds");
    make("db/tree.png");
    unfit = folder / "db/tree.dds";
    EXPECT_EQ(find("tree.dds"), "db/tree.png");
}

TEST_F(FltTextureSearchTest, SaysWhereItLooked)
{
    EXPECT_EQ(find("C:\\models\\tex\\tree.rgb", {"lib"}), "");
    ASSERT_GE(tried.size(), 2U);
    EXPECT_EQ(tried[0], folder / "db/tree.rgb");
    EXPECT_EQ(tried[1], folder / "lib/tree.rgb");
    EXPECT_LE(tried.size(), 16U);
    EXPECT_EQ(find("tex/tree.rgb"), "");
    EXPECT_EQ(tried[0], folder / "db/tex/tree.rgb");
}

TEST_F(FltTextureSearchTest, OffersPlainFilesOnly)
{
    std::filesystem::create_directories(folder / "db/tree.rgb");
    ASSERT_EQ(::mkfifo((folder / "db/pipe.rgb").c_str(), 0600), 0);
    EXPECT_EQ(find("tree.rgb"), "");
    EXPECT_EQ(find("pipe.rgb"), "");
    EXPECT_EQ(find("/dev/zero"), "");
    EXPECT_TRUE(offered.empty());
}

TEST_F(FltTextureSearchTest, TakesStrangeNames)
{
    for (char const* const name :
         {"", ".", "..", "/", "///", "\\", ":", "C:", "a/", "../..", "\xff\xfe/\x01"})
        EXPECT_EQ(find(name), "") << name;
    std::string deep;
    for (int i = 0; i < 100; ++i)
        deep += "a/";
    EXPECT_EQ(find(deep + "x.rgb", {"lib"}), "");
}
