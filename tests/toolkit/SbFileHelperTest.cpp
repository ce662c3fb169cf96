#include "toolkit/SbFileHelper.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace
{

std::string extensionOf(char const* name)
{
    return SbFileHelper::getExtension(name).getString();
}

} // namespace

TEST(SbFileHelper, takesTheTextBehindTheLastDotForTheExtension)
{
    EXPECT_EQ(extensionOf("tower.flt"), "flt");
    EXPECT_EQ(extensionOf("/a/tower.old.FLT"), "FLT");
    EXPECT_EQ(extensionOf(".flt"), "flt");
}

TEST(SbFileHelper, findsNoExtensionWithoutADotInTheLastPart)
{
    EXPECT_EQ(extensionOf(""), "");
    EXPECT_EQ(extensionOf("tower"), "");
    EXPECT_EQ(extensionOf("tower."), "");
    EXPECT_EQ(extensionOf("models.flt/tower"), "");
}

TEST(SbFileHelper, opensARegularFileAndClosesIt)
{
    ScratchFolder const folder;
    std::ofstream(folder.path("a")) << "text";
    FILE* const file = SbFileHelper::open(folder.path("a").c_str(), "r");
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(std::fgetc(file), 't');
    SbFileHelper::close(file);
}

TEST(SbFileHelper, opensNothingButRegularFiles)
{
    ScratchFolder const folder;
    EXPECT_EQ(SbFileHelper::open(folder.path("none").c_str(), "r"), nullptr);
    EXPECT_EQ(SbFileHelper::open("", "r"), nullptr);
    EXPECT_EQ(SbFileHelper::open("/tmp", "r"), nullptr);
    EXPECT_EQ(SbFileHelper::open("/dev/zero", "r"), nullptr);
    ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(SbFileHelper::open(folder.path("pipe").c_str(), "r"), nullptr);
}

TEST(SbFileHelper, refusesAModeThatIsNone)
{
    ScratchFolder const folder;
    std::ofstream(folder.path("a")) << "text";
    EXPECT_EQ(SbFileHelper::open(folder.path("a").c_str(), "?"), nullptr);
}

TEST(SbFileHelper, takesNullForClosed)
{
    EXPECT_NO_THROW(SbFileHelper::close(nullptr));
}
