#include "robustness/Endurance.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace
{

class TruncationTest : public testing::TestWithParam<std::size_t>
{
protected:
    QuietToolkit const quiet;
    SmallVertexPalettes const small{4};
    FltTopic const& topic = topics()[GetParam()];
};

} // namespace

TEST_P(TruncationTest, DatabaseCutBehindAnyByteKeepsAllRecordsThatAreWhole)
{
    int before = 0;
    for (std::size_t size = topic.begin; size <= topic.end; ++size) {
        std::string const cut = topic.bytes.substr(0, size);
        Endured const endured = endure(cut, Use::countRecords);
        ASSERT_EQ(endured.records, countWholeRecords(cut)) << size;
        ASSERT_GE(endured.records, before) << size;
        ASSERT_FALSE(endured.wasRefused) << size;
        before = endured.records;
    }
    EXPECT_GT(before, 0);
}

INSTANTIATE_TEST_SUITE_P(Topic, TruncationTest, testing::Range<std::size_t>(0, topics().size()), nameOfTopic);
