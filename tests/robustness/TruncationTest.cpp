#include "robustness/Endurance.h"
#include "writer/EveryRecord.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace
{

constexpr int parts = 8;

class TruncationTest : public testing::TestWithParam<int>
{
protected:
    QuietToolkit const quiet;
    SmallVertexPalettes const small{4};
    std::string const whole = everyRecordInBrief(1570).bytes();
};

} // namespace

TEST_P(TruncationTest, DatabaseCutBehindAnyByteKeepsAllRecordsThatAreWhole)
{
    auto const part = static_cast<std::size_t>(GetParam());
    std::size_t const end = (whole.size() * (part + 1) + parts - 1) / parts;
    int before = 0;
    for (std::size_t size = whole.size() * part / parts; size <= end && size <= whole.size(); ++size) {
        std::string const cut = whole.substr(0, size);
        Endured const endured = endure(cut, true);
        ASSERT_EQ(endured.records, countWholeRecords(cut)) << size;
        ASSERT_GE(endured.records, before) << size;
        ASSERT_FALSE(endured.wasRefused) << size;
        before = endured.records;
    }
    EXPECT_GT(before, 5 * GetParam());
}

INSTANTIATE_TEST_SUITE_P(Part, TruncationTest, testing::Range(0, parts));
