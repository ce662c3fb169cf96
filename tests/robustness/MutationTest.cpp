#include "robustness/Endurance.h"
#include "writer/EveryRecord.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <tuple>
#include <vector>

namespace
{

constexpr int parts = 4;
constexpr int onePlus = -1;
constexpr std::size_t mostOfALog = 8U << 20;
constexpr double mostSecondsOfAPart = 200;

class MutationTest : public testing::TestWithParam<std::tuple<int, int>>
{
protected:
    QuietToolkit const quiet;
    SmallVertexPalettes const small{4};
    std::string const whole = everyRecordInBrief(1570).bytes();
};

class RandomDatabaseTest : public testing::TestWithParam<unsigned>
{
protected:
    unsigned below(unsigned limit) { return static_cast<unsigned>(random() % limit); }

    std::string randomBytes(std::size_t size)
    {
        static char const favourites[] = {0, 0, 0, 1, 4, 8, 10, '\x7f', '\x80', '\xff'};
        bool const isNoise = below(2) == 0;
        std::string bytes(size, '\0');
        for (char& byte : bytes)
            byte = isNoise ? static_cast<char>(below(256)) : favourites[below(sizeof favourites)];
        return bytes;
    }

    /// A record of the kind that a broken file may hold.
    void addTo(FltWriter& flt)
    {
        static std::vector<std::string> const whole = recordsOf(everyRecordInBrief(1570).bytes());
        switch (below(8)) {
        case 0:
        case 1:
            flt.push();
            break;
        case 2:
            flt.pop();
            break;
        case 3:
            flt.addRaw(static_cast<int>(below(117)), randomBytes(below(400)));
            break;
        case 4:
            flt.addRaw(static_cast<int>(below(117)), randomBytes(below(8)));
            break;
        default: {
            std::string record = whole[below(static_cast<unsigned>(whole.size()))];
            for (unsigned changes = below(4); changes > 0 && record.size() > 4; --changes)
                record[4 + below(static_cast<unsigned>(record.size() - 4))] = randomBytes(1)[0];
            if (below(20) == 0)
                record[3] = static_cast<char>(below(256));
            flt.addBytes(record);
            break;
        }
        }
    }

    static std::vector<std::string> recordsOf(std::string const& bytes)
    {
        std::vector<std::string> records;
        for (std::size_t offset = 0; offset < bytes.size(); offset += records.back().size())
            records.push_back(bytes.substr(
                offset, static_cast<std::size_t>(static_cast<unsigned char>(bytes[offset + 2]) << 8 |
                                                 static_cast<unsigned char>(bytes[offset + 3]))));
        return records;
    }

    QuietToolkit const quiet;
    SmallVertexPalettes const small{4};
    std::mt19937 random{GetParam()}; // the same databases in every run
};

} // namespace

TEST_P(MutationTest, DatabaseWithAnyByteChangedIsConvertedToTheEnd)
{
    auto const [value, part] = GetParam();
    auto const position = static_cast<std::size_t>(part);
    Stopwatch const watch;
    std::size_t converted = 0;
    for (std::size_t at = whole.size() * position / parts; at < whole.size() * (position + 1) / parts; ++at) {
        std::string changed = whole;
        changed[at] = static_cast<char>(value == onePlus ? changed[at] + 1 : value);
        Endured const endured = endure(changed);
        ASSERT_LT(endured.logBytes, mostOfALog) << "byte " << at;
        converted += endured.wasRefused ? 0 : 1;
    }
    EXPECT_GT(converted, whole.size() / parts * 9 / 10);
    EXPECT_LT(watch.seconds(), mostSecondsOfAPart);
}

INSTANTIATE_TEST_SUITE_P(Part, MutationTest,
                         testing::Combine(testing::Values(0x00, 0x7f, 0x80, 0xff, onePlus),
                                          testing::Range(0, parts)));

TEST_P(RandomDatabaseTest, DatabasesOfRandomRecordsAreConvertedToTheEnd)
{
    static int const revisions[] = {11, 13, 14, 1420, 1421, 1500, 1540, 1570, 1580};
    Stopwatch const watch;
    int converted = 0;
    for (int i = 0; i < 1000; ++i) {
        FltWriter flt(revisions[below(std::size(revisions))]);
        for (unsigned records = 1 + below(60); records > 0; --records)
            addTo(flt);
        Endured const endured = endure(flt.bytes());
        ASSERT_LT(endured.logBytes, mostOfALog) << "database " << i;
        converted += endured.wasRefused ? 0 : 1;
    }
    EXPECT_GT(converted, 900);
    EXPECT_LT(watch.seconds(), mostSecondsOfAPart);
}

INSTANTIATE_TEST_SUITE_P(Seed, RandomDatabaseTest, testing::Values(1U, 2U, 3U, 4U));
