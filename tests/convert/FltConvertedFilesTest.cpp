#include "convert/FltConvertedFiles.h"

#include "messages/FltLimits.h"

#include <gtest/gtest.h>

namespace
{

using Identity = FltConvertedFiles::Identity;

class FltConvertedFilesTest : public testing::Test
{
protected:
    Identity const top{1, 1};
    Identity const tree{1, 2};
    FltConvertedFiles::Scene const scene{SoNodeRef<SoSeparator>(new SoSeparator), 3, 40};
    FltConvertedFiles files;
};

TEST_F(FltConvertedFilesTest, OnlyTheFirstReadIsNew)
{
    EXPECT_TRUE(files.read(tree, 10));
    EXPECT_FALSE(files.read(tree, 10));
    EXPECT_TRUE(files.read({2, 2}, 10));
}

TEST_F(FltConvertedFilesTest, TheFileThatTheConversionBeganWithIsNotNew)
{
    files.begin(top, 100);
    EXPECT_FALSE(files.read(top, 100));
}

TEST_F(FltConvertedFilesTest, AHandfulOfNamesOfAFileAreReadEach)
{
    files.begin(top, 100);
    files.read(tree, 10);
    files.finish(tree, scene);
    EXPECT_EQ(files.findInstead(tree, 10, FltLimits::namesOfAFile - 1), nullptr);
    auto const* const found = files.findInstead(tree, 10, FltLimits::namesOfAFile);
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->root.get(), scene.root.get());
    EXPECT_EQ(found->depth, 3);
    EXPECT_EQ(found->nodes, 40);
}

TEST_F(FltConvertedFilesTest, AFileThatIsStillBeingReadHasNoSceneYet)
{
    files.read(tree, 10);
    EXPECT_EQ(files.findInstead(tree, 10, 1000), nullptr);
}

TEST_F(FltConvertedFilesTest, TheFirstSceneIsKept)
{
    files.read(tree, 10);
    files.finish(tree, scene);
    files.finish(tree, {SoNodeRef<SoSeparator>(new SoSeparator), 9, 9});
    EXPECT_EQ(files.findInstead(tree, 10, 1000)->root.get(), scene.root.get());
}

TEST_F(FltConvertedFilesTest, AThousandTimesItsBytesMayBeReadAgainAndNoMore)
{
    files.begin(top, 10);
    files.read(tree, 10);
    files.finish(tree, scene);
    std::int64_t const most = (10 + 10) * FltLimits::externalBytesPerByte / 10;
    for (std::int64_t i = 1; i < most; ++i) {
        ASSERT_EQ(files.findInstead(tree, 10, 0), nullptr) << i;
        files.read(tree, 10);
    }
    EXPECT_NE(files.findInstead(tree, 10, 0), nullptr);
}

} // namespace
