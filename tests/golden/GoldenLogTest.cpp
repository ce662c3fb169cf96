#include "support/ConvertedFile.h"
#include "support/RecordText.h"
#include "support/SameText.h"
#include "support/ScratchFolder.h"
#include "writer/EveryRecord.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

std::string goldenFile(std::string const& name)
{
    return contentsOf(std::string(VELLOREADER_GOLDEN) + name);
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
    expectSameText(withoutAddress(contentsOf(path + ".log")),
                   goldenFile("every_record_" + std::to_string(GetParam()) + ".log"));
}

INSTANTIATE_TEST_SUITE_P(Revision, GoldenLogTest, testing::Values(13, 1420, 1510, 1540, 1570, 1580, 1600));

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
