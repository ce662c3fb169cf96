#include "textures/FltTextureSearch.h"

#include "support/ScratchFolder.h"

#include <algorithm>
#include <climits>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

/// Counts how often anybody reads the names in a directory.
class ReadWatch
{
public:
    explicit ReadWatch(std::string const& path) : descriptor(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        EXPECT_GE(::inotify_add_watch(descriptor, path.c_str(), IN_OPEN | IN_ONLYDIR), 0);
    }
    ~ReadWatch() { ::close(descriptor); }

    ReadWatch(ReadWatch const&) = delete;
    ReadWatch& operator=(ReadWatch const&) = delete;

    int listings() const
    {
        int count = 0;
        alignas(inotify_event) char events[4096];
        for (ssize_t size = 0; (size = ::read(descriptor, events, sizeof events)) > 0;)
            for (char const* next = events; next < events + size;) {
                auto const* const event = reinterpret_cast<inotify_event const*>(next);
                count += event->len == 0 && (event->mask & IN_ISDIR) != 0 ? 1 : 0; // itself, not a file in it
                next += sizeof *event + event->len;
            }
        return count;
    }

private:
    int descriptor;
};

bool takeAny(std::string const& /*path*/, OpenFile const& /*file*/)
{
    return true;
}

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
            search.find(name, {folder / "db/"}, [this](std::string const& path, OpenFile const&) {
                offered.push_back(path);
                return path != unfit;
            });
        tried = result.tried;
        std::string const root = folder / "";
        return result.path.compare(0, root.size(), root) == 0 ? result.path.substr(root.size()) : result.path;
    }

    /// The files that are tried for a name, in order, while none will do.
    std::vector<std::string> offeredFor(std::string const& name) const
    {
        std::vector<std::string> paths;
        FltTextureSearch({}).find(name, {folder / "db/"}, [&paths](std::string const& path, OpenFile const&) {
            if (std::find(paths.begin(), paths.end(), path) == paths.end())
                paths.push_back(path);
            return false;
        });
        return paths;
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

TEST_F(FltTextureSearchTest, BeginsNoTailWithAWayUp)
{
    make("tex/tree.rgb");
    EXPECT_EQ(find("nowhere/../tex/tree.rgb", {"lib"}), "") << "it isn't below the directory";
    make("lib/tex/tree.rgb");
    EXPECT_EQ(find("nowhere/../tex/tree.rgb", {"lib"}), "lib/tex/tree.rgb") << "the rest of the name is";
    EXPECT_EQ(find("../nowhere/C:/../tex/tree.rgb", {"lib"}), "lib/tex/tree.rgb");
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

TEST_F(FltTextureSearchTest, TriesSpellingsInTheOrderOfTheirLettersOnEveryMachine)
{
    std::vector<std::string> sorted;
    for (char const* const name :
         {"TREE.RGB", "TREE.rgb", "TRee.rgb", "Tree.RGB", "Tree.rgb", "tREE.rgb", "treE.rgb"}) {
        make("db/" + std::string(name));
        sorted.push_back(folder / ("db/" + std::string(name)));
    }
    EXPECT_EQ(offeredFor("tree.rgb"), sorted);
}

TEST_F(FltTextureSearchTest, PrefersTheCaseAsStoredThenTheEndingAsStored)
{
    std::vector<std::string> ordered;
    for (char const* const name : {"tree.tif", "TREE.TIF", "tree.png", "TREE.PNG"}) {
        make("db/" + std::string(name));
        ordered.push_back(folder / ("db/" + std::string(name)));
    }
    EXPECT_EQ(offeredFor("tree.tif"), ordered);
}

TEST_F(FltTextureSearchTest, TriesEndingsInTheOrderOfTheirUse)
{
    std::vector<std::string> ordered;
    for (char const* const ending : {".rgb", ".rgba", ".png", ".jpg", ".jpeg", ".int", ".inta", ".sgi",
                                     ".tif", ".tiff", ".bw", ".dds"}) {
        make("db/tree" + std::string(ending));
        ordered.push_back(folder / ("db/tree" + std::string(ending)));
    }
    EXPECT_EQ(offeredFor("tree.pic"), ordered);
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
    EXPECT_EQ(find("tex/tree.rgb"), "");
    EXPECT_EQ(tried[0], folder / "db/tex/tree.rgb");
    EXPECT_EQ(find("../tex/tree.rgb"), "");
    EXPECT_EQ(tried[0], folder / "db/../tex/tree.rgb");
}

TEST_F(FltTextureSearchTest, NamesThePlaceBesideTheNamingFileFirstAndCountsTheOthers)
{
    FltTextureSearch search({folder / "lib", folder / "lib/", folder / "more"});
    auto const takesNone = [](std::string const&, OpenFile const&) { return false; };
    std::size_t const all =
        search.find("tree.rgb", {folder / "db/"}, takesNone).otherDirectories; // with the toolkit's own
    EXPECT_GE(all, 2U);
    FltTextureSearch::Result const result =
        search.find("tree.rgb", {folder / "db/", folder / "db/sub"}, takesNone);
    EXPECT_EQ(result.tried.at(0), folder / "db/sub/tree.rgb");
    EXPECT_EQ(result.tried.at(1), folder / "db/tree.rgb");
    EXPECT_EQ(result.otherDirectories, all + 1);
    FltTextureSearch::Result const absolute = search.find("/no/tree.rgb", {folder / "db/"}, takesNone);
    EXPECT_EQ(absolute.tried.at(0), "/no/tree.rgb");
    EXPECT_EQ(absolute.otherDirectories, all + 1) << "that of the database too";
}

TEST_F(FltTextureSearchTest, ToldPlacesAreBounded)
{
    std::vector<std::string> many;
    for (int i = 0; i < 200; ++i)
        many.push_back("d" + std::to_string(i));
    EXPECT_EQ(find("tex/tree.rgb", many), "");
    EXPECT_LE(tried.size(), 65U);
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

TEST_F(FltTextureSearchTest, ComesToADirectoryOnceWithTheSameRestOfAName)
{
    make("db/a/keep");
    make("db/A/keep");
    make("db/x.rgb");
    unfit = folder / "db/x.rgb";
    for (std::size_t const steps : {1U, 12U, 5000U}) {
        std::string name;
        for (std::size_t i = 0; i < steps; ++i)
            name += "a/../";
        offered.clear();
        FltTextureSearch search({});
        search.find(name + "x.rgb", {folder / "db/"}, [this](std::string const& path, OpenFile const&) {
            offered.push_back(path);
            return false;
        });
        ASSERT_LE(offered.size(), 8U) << steps << " steps: one for each of four ways, and for each folder";
        for (std::string const& path : offered)
            EXPECT_LT(path.size(), std::size_t(PATH_MAX));
    }
}

TEST_F(FltTextureSearchTest, ReadsADirectoryOnceWhateverNamesLeadToIt)
{
    make("db/a/b/keep");
    make("db/A/keep");
    std::filesystem::create_directory_symlink(folder / "db", folder / "db/a/again");
    FltTextureSearch search({folder / "db/a/.."});
    ReadWatch watch(folder / "db");
    for (char const* const name :
         {"a/../a/../none.rgb", "a/again/none.rgb", "a/b/../../none.rgb", "A/../a/again/a/again/none.rgb"})
        EXPECT_EQ(search.find(name, {folder / "db/", folder / "db/a/again"}, takeAny).path, "") << name;
    EXPECT_EQ(watch.listings(), 1);
}

TEST_F(FltTextureSearchTest, AWayUpBehindALinkIsThatOfItsTarget)
{
    make("far/sub/keep");
    make("far/tree.rgb");
    make("db/tree.rgb");
    std::filesystem::create_directory_symlink(folder / "far/sub", folder / "db/link");
    EXPECT_EQ(find("link/../tree.rgb"), "db/link/../tree.rgb");
    EXPECT_EQ(contentsOf(folder / "db/link/../tree.rgb"), contentsOf(folder / "far/tree.rgb"));
    EXPECT_EQ(find("link/../sub/../tree.rgb"), "db/link/../sub/../tree.rgb");
}

TEST_F(FltTextureSearchTest, GoesOnInEachDirectoryThatDiffersInCaseAlone)
{
    make("db/TEX/keep");
    make("db/Tex/Deep/Tree.rgb");
    make("db/tex/deep/keep");
    EXPECT_EQ(find("tex/deep/tree.rgb"), "db/Tex/Deep/Tree.rgb");
    EXPECT_EQ(find("tex/../TEX/deep/tree.rgb"), "db/TEX/../Tex/Deep/Tree.rgb");
}

TEST_F(FltTextureSearchTest, LooksForANameThatIsTooLongToBeOpened)
{
    make("db/a/x.rgb");
    std::string name;
    while (name.size() < 2 * PATH_MAX)
        name += "a/../";
    std::string const found = find(name + "a/x.rgb");
    EXPECT_LT(found.size(), std::size_t(PATH_MAX));
    EXPECT_TRUE(std::filesystem::equivalent(folder / found, folder / "db/a/x.rgb")) << found;
}

TEST_F(FltTextureSearchTest, HandsOverTheFileThatItFound)
{
    folder.write("db/tree.rgb", "the found one");
    FltTextureSearch search({});
    search.find("tree.rgb", {folder / "db/"}, [&](std::string const& path, OpenFile const& file) {
        std::filesystem::remove(path);
        folder.write("db/tree.rgb", "another one");
        char text[20] = {};
        EXPECT_GT(::read(file.descriptor(), text, sizeof text), 0);
        EXPECT_STREQ(text, "the found one");
        return true;
    });
}

TEST_F(FltTextureSearchTest, LooksIntoADirectoryThatItMayOnlyPassThrough)
{
    make("db/tex/tree.rgb");
    std::filesystem::permissions(folder / "db/tex", std::filesystem::perms::owner_exec);
    EXPECT_EQ(find("tex/tree.rgb"), "db/tex/tree.rgb");
    std::filesystem::permissions(folder / "db/tex", std::filesystem::perms::owner_all);
}

TEST_F(FltTextureSearchTest, ANameIsSoughtBesideTheDatabaseBeforeItIsFromTheCurrentDirectory)
{
    folder.write("db/tree.rgb", "");
    folder.write("here/tree.rgb", "");
    std::filesystem::path const before = std::filesystem::current_path();
    std::filesystem::current_path(folder / "here");
    std::string const found = find("tree.rgb");
    std::vector<std::string> const opened = offered;
    std::filesystem::current_path(before);
    EXPECT_EQ(found, "db/tree.rgb");
    EXPECT_EQ(opened, std::vector<std::string>{folder / "db/tree.rgb"});
}
