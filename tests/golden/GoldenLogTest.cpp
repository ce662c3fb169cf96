#include "support/ConvertedFile.h"
#include "support/RecordText.h"
#include "support/ScratchFolder.h"
#include "writer/EveryRecord.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace
{

std::string goldenFile(std::string const& name)
{
    return contentsOf(std::string(VELLOREADER_GOLDEN) + name);
}

/// Expects two texts to be the same, byte for byte, and shows where they part.
void expectSame(std::string const& text, std::string const& golden)
{
    if (text == golden)
        return;
    auto const parting = std::mismatch(text.begin(), text.end(), golden.begin(), golden.end());
    auto const at = static_cast<std::size_t>(parting.first - text.begin());
    std::size_t const from = at > 300 ? at - 300 : 0;
    ADD_FAILURE() << "They part at byte " << at << ".\n--- is:\n"
                  << text.substr(from, 600) << "\n--- golden:\n"
                  << golden.substr(std::min(from, golden.size()), 600);
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
    expectSame(withoutAddress(contentsOf(path + ".log")),
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
    expectSame(converted.text(), goldenFile("every_record_" + std::to_string(GetParam()) + ".iv"));
}

INSTANTIATE_TEST_SUITE_P(Revision, GoldenSceneTest, testing::Values(13, 1570));
