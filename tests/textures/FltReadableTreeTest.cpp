#include "textures/FltReadableTree.h"

#include "support/ExchangedFolders.h"
#include "support/OpenWatch.h"

#include <cerrno>
#include <cstdarg>
#include <functional>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

// The linker has the library call these for syscall() and openat(), and this file reach the system's own.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" long __wrap_syscall(long number, ...);
extern "C" long __real_syscall(long number, ...);
extern "C" int __wrap_openat(int directory, char const* name, int flags, ...);
extern "C" int __real_openat(int directory, char const* name, int flags, ...);
// NOLINTEND(bugprone-reserved-identifier)

namespace
{

/// What the system answers to openat2, and what happens just before a call, as long as this object lives.
class PlannedSystem
{
public:
    explicit PlannedSystem(int errorOfOpenat2) { error = errorOfOpenat2; }
    ~PlannedSystem()
    {
        error = 0;
        beforeOpenat = nullptr;
    }

    PlannedSystem(PlannedSystem const&) = delete;
    PlannedSystem& operator=(PlannedSystem const&) = delete;

    inline static int error = 0; ///< 0 for the system's own answer.
    inline static std::function<void()> beforeOpenat;
};

} // namespace

extern "C" long __wrap_syscall(long number, ...)
{
    std::va_list list;
    va_start(list, number);
    long arguments[6];
    for (long& argument : arguments)
        argument = va_arg(list, long);
    va_end(list);
    if (number == SYS_openat2 && PlannedSystem::error != 0) {
        errno = PlannedSystem::error;
        return -1;
    }
    return __real_syscall(number, arguments[0], arguments[1], arguments[2], arguments[3], arguments[4],
                          arguments[5]);
}

extern "C" int __wrap_openat(int directory, char const* name, int flags, ...)
{
    if (PlannedSystem::beforeOpenat)
        PlannedSystem::beforeOpenat();
    return __real_openat(directory, name, flags); // the library makes no files by it
}

namespace
{

/// With openat2 as the system has it, with a system that doesn't know it, and with one that forbids it.
class FltReadableTreeTest : public testing::TestWithParam<int>
{
protected:
    /// The text of a file that is opened; otherwise the number of the error.
    static std::string read(FltReadableTree const& tree, std::string const& path)
    {
        errno = 0;
        OpenFile const file = tree.open(path);
        char text[20];
        ssize_t const size = file.isOpen() ? ::read(file.descriptor(), text, sizeof text) : -1;
        return size >= 0 ? std::string(text, static_cast<std::size_t>(size)) : std::to_string(errno);
    }

    ScratchFolder folder;
    std::string const inside = folder.write("tree/sub/inside", "in");
    std::string const outside = folder.write("tree2/outside", "out");
    std::string const none = std::to_string(ENOENT);
    std::string const elsewhere = std::to_string(EXDEV);
    PlannedSystem system{GetParam()};
};

std::string nameOf(testing::TestParamInfo<int> const& test)
{
    return test.param == 0 ? "AsTheSystemHasIt" : test.param == ENOSYS ? "WithoutOpenat2" : "OpenatForbidden";
}

} // namespace

INSTANTIATE_TEST_SUITE_P(, FltReadableTreeTest, testing::Values(0, ENOSYS, EPERM), nameOf);

TEST_P(FltReadableTreeTest, HoldsEverythingWithoutADirectory)
{
    FltReadableTree const all;
    EXPECT_TRUE(all.holds(outside));
    EXPECT_TRUE(all.holds(folder / "nowhere"));
    EXPECT_EQ(read(all, outside), "out");
    EXPECT_EQ(read(all, folder / "nowhere"), none);
}

TEST_P(FltReadableTreeTest, HoldsTheDirectoryAndWhatIsBelow)
{
    for (std::string const& name :
         {folder / "tree", folder / "tree/", folder / "tree//", folder / "tree2/../tree/."}) {
        FltReadableTree const tree(name);
        EXPECT_TRUE(tree.holds(inside)) << name;
        EXPECT_TRUE(tree.holds(folder / "tree")) << name;
        EXPECT_TRUE(tree.holds(folder / "tree/sub/")) << name;
        EXPECT_FALSE(tree.holds(folder / "tree/sub/nowhere")) << name;
        EXPECT_FALSE(tree.holds(outside)) << name;
        EXPECT_FALSE(tree.holds(folder / "")) << name;
        for (std::string const& file : {inside, name + "/sub/inside", folder / "tree2/../tree/sub//./inside"})
            EXPECT_EQ(read(tree, file), "in") << name << ' ' << file;
        EXPECT_EQ(read(tree, folder / "tree/sub/nowhere"), none) << name;
        EXPECT_EQ(read(tree, outside), elsewhere) << name;
        EXPECT_EQ(read(tree, name + "/../tree2/outside"), elsewhere) << name;
    }
}

TEST_P(FltReadableTreeTest, JudgesByTheRealPlace)
{
    std::filesystem::create_symlink(outside, folder / "tree/out");
    std::filesystem::create_directory_symlink(folder / "tree2", folder / "tree/folder");
    std::filesystem::create_symlink(inside, folder / "in");
    std::filesystem::create_symlink("sub/inside", folder / "tree/near");
    std::filesystem::create_symlink(inside, folder / "tree/absolute");
    folder.write("tree/x", "in");
    std::filesystem::create_symlink(folder / "tree/x", folder / "tree/short");
    std::filesystem::create_symlink("../in", folder / "tree/outAndIn");
    FltReadableTree const tree(folder / "tree");
    for (char const* const name : {"tree/out", "tree/folder/outside", "tree/../tree2/outside"}) {
        EXPECT_FALSE(tree.holds(folder / name)) << name;
        EXPECT_EQ(read(tree, folder / name), elsewhere) << name;
    }
    for (char const* const name :
         {"in", "tree2/../tree/sub/inside", "tree/near", "tree/absolute", "tree/short", "tree/outAndIn"}) {
        EXPECT_TRUE(tree.holds(folder / name)) << name;
        EXPECT_EQ(read(tree, folder / name), "in") << name;
    }
}

TEST_P(FltReadableTreeTest, HoldsNothingIfItsDirectoryIsNotThere)
{
    for (std::string const& name : {folder / "nowhere", inside}) {
        FltReadableTree const tree(name);
        EXPECT_FALSE(tree.holds(inside)) << name;
        EXPECT_FALSE(tree.holds(name)) << name;
        EXPECT_EQ(read(tree, inside), elsewhere) << name;
    }
}

TEST_P(FltReadableTreeTest, HoldsAllFilesBelowTheRoot)
{
    EXPECT_TRUE(FltReadableTree("/").holds(outside));
    EXPECT_EQ(read(FltReadableTree("/"), outside), "out");
}

TEST_P(FltReadableTreeTest, NamesFromTheCurrentDirectoryCountToo)
{
    std::filesystem::path const before = std::filesystem::current_path();
    std::filesystem::current_path(folder / "tree");
    for (char const* const name : {"", ".", "./"}) {
        FltReadableTree const tree(name);
        EXPECT_EQ(read(tree, "sub/inside"), "in") << name;
        EXPECT_EQ(read(tree, "./sub/inside"), "in") << name;
        EXPECT_EQ(read(tree, "../tree2/outside"), elsewhere) << name;
        EXPECT_EQ(read(tree, outside), elsewhere) << name;
    }
    EXPECT_EQ(read(FltReadableTree("sub"), "sub/inside"), "in");
    std::filesystem::current_path(before);
}

TEST_P(FltReadableTreeTest, OpensNothingButRegularFiles)
{
    std::string const pipe = folder / "tree/pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    FltReadableTree const tree(folder / "tree");
    OpenWatch watch(pipe);
    EXPECT_EQ(read(tree, pipe), std::to_string(EINVAL));
    EXPECT_FALSE(watch.wasOpened());
    EXPECT_EQ(read(tree, folder / "tree/sub"), std::to_string(EINVAL));
    EXPECT_EQ(read(tree, folder / "tree"), std::to_string(EINVAL));
}

TEST_P(FltReadableTreeTest, OpensNoFileOutsideNotEvenToLookAtIt)
{
    std::filesystem::create_symlink(outside, folder / "tree/out");
    FltReadableTree const tree(folder / "tree");
    OpenWatch watch(outside);
    for (std::string const& name : {outside, folder / "tree/out", folder / "tree/../tree2/outside"})
        EXPECT_EQ(read(tree, name), elsewhere) << name;
    EXPECT_FALSE(watch.wasOpened());
    static_cast<void>(read(FltReadableTree(), outside));
    EXPECT_TRUE(watch.wasOpened()) << "the watch sees what is opened";
}

TEST_P(FltReadableTreeTest, OpensDirectoriesByTheSameRule)
{
    std::filesystem::create_directory_symlink(folder / "tree2", folder / "tree/folder");
    std::filesystem::create_directory_symlink(folder / "tree/sub", folder / "tree/back");
    FltReadableTree const tree(folder / "tree");
    for (char const* const name : {"tree", "tree/sub/", "tree/back", "tree/sub/.."})
        EXPECT_TRUE(tree.openDirectory(folder / name).isOpen()) << name;
    for (char const* const name : {"tree/folder", "tree2", "tree/..", "tree/sub/inside", "tree/nowhere"})
        EXPECT_FALSE(tree.openDirectory(folder / name).isOpen()) << name;
    EXPECT_TRUE(FltReadableTree().openDirectory(folder / "tree2").isOpen());
    EXPECT_FALSE(FltReadableTree().openDirectory(outside).isOpen());
}

TEST_P(FltReadableTreeTest, StaysWithItsDirectoryWhateverTakesTheName)
{
    FltReadableTree const tree(folder / "tree");
    std::filesystem::rename(folder / "tree", folder / "moved");
    folder.write("tree/sub/inside", "another");
    EXPECT_EQ(read(tree, inside), "in");
}

TEST_P(FltReadableTreeTest, FollowsNoLinkThatTakesTheNameOfADirectoryMeanwhile)
{
    ExchangedFolders const folders;
    folders.folder.write("tree/part/file", "in");
    folders.folder.write("outside/file", "out");
    FltReadableTree const tree(folders.tree());
    OpenWatch watch(folders.outside() + "/file");
    // Before each part but the last is opened, the one that was a directory becomes a link.
    PlannedSystem::beforeOpenat = [&] { folders.exchange(); };
    for (int i = 0; i < 5; ++i)
        EXPECT_NE(read(tree, folders.inside() + "/file"), "out");
    EXPECT_FALSE(watch.wasOpened());
}
