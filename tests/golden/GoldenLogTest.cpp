#include "support/ConvertedFile.h"
#include "support/PatchedText.h"
#include "support/RecordText.h"
#include "support/SameText.h"
#include "support/ScratchFolder.h"
#include "writer/EveryRecord.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <iterator>
#include <string>

namespace
{

std::string goldenFile(std::string const& name)
{
    return contentsOf(std::string(VELLOREADER_GOLDEN) + name);
}

constexpr int revisions[] = {13, 1420, 1510, 1540, 1570, 1580, 1600};

/// The log of the first revision stands as it is, that of each further one as its differences to the one
/// before.
std::string goldenLog(int revision)
{
    std::string log = goldenFile("every_record_" + std::to_string(revisions[0]) + ".log");
    for (std::size_t i = 1; i < std::size(revisions) && revisions[i] <= revision; ++i)
        log = patchedText(log, goldenFile("every_record_" + std::to_string(revisions[i]) + ".diff"));
    return log;
}

class GoldenLogTest : public testing::TestWithParam<int>
{
};

class GoldenSceneTest : public testing::TestWithParam<int>
{
};

} // namespace

TEST_P(GoldenLogTest, LogOfEveryRecordIsTheSameByteForByte)
{
    ScratchFolder const folder;
    std::string const path = folder.path("every_record.flt");
    everyRecord(GetParam()).save(path);
    ConvertedFile const converted(path);
    ASSERT_NE(converted.root, nullptr);
    expectSameText(withoutAddress(contentsOf(path + ".log")), goldenLog(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Revision, GoldenLogTest, testing::ValuesIn(revisions));

TEST_P(GoldenSceneTest, SceneOfEveryRecordIsTheSameByteForByte)
{
    ScratchFolder const folder;
    std::string const path = folder.path("every_record.flt");
    everyRecord(GetParam()).save(path);
    ConvertedFile const converted(path);
    ASSERT_NE(converted.root, nullptr);
    expectSameText(converted.text(), goldenFile("every_record_" + std::to_string(GetParam()) + ".iv"));
}

INSTANTIATE_TEST_SUITE_P(Revision, GoldenSceneTest, testing::Values(13, 1570));

TEST(PatchedTextTest, TakesAwayAddsAndChangesLinesAnywhere)
{
    std::string const text = "a\nb\nc\nd\n";
    EXPECT_EQ(patchedText(text, ""), text);
    EXPECT_EQ(patchedText(text, "0a1,2\n> 1\n> 2\n"), "1\n2\na\nb\nc\nd\n");
    EXPECT_EQ(patchedText(text, "1d0\n< a\n4a4\n> e\n"), "b\nc\nd\ne\n");
    EXPECT_EQ(patchedText(text, "2,3c2\n< b\n< c\n---\n> --- \n"), "a\n--- \nd\n");
    EXPECT_THROW(patchedText(text, "2d1\n< a\n"), std::runtime_error);
    EXPECT_THROW(patchedText(text, "5d4\n< e\n"), std::runtime_error);
}
