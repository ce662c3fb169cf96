#include "robustness/Endurance.h"
#include "robustness/Mutations.h"
#include "writer/EveryRecord.h"

#include "records/FltUtils.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace
{

constexpr std::size_t mostOfALog = 8U << 20;
constexpr std::size_t mostOfAScene = 8U << 20;

/// Expects a conversion to make no more than a database of a few kilobytes may become.
void expectToBeSmall(Endured const& endured)
{
    EXPECT_LT(endured.logBytes, mostOfALog);
    EXPECT_LT(endured.sceneBytes, mostOfAScene);
}

class MutationTest : public testing::TestWithParam<std::size_t>
{
protected:
    QuietToolkit const quiet;
    SmallVertexPalettes const small{4};
    FltTopic const& topic = topics()[GetParam()];
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

    QuietToolkit const quiet;
    SmallVertexPalettes const small{4};
    std::mt19937 random{GetParam()}; // the same databases in every run
};

} // namespace

TEST(MutationTopicsTest, HoldEveryRecordOfTheFormat)
{
    std::set<std::string> inTopics;
    for (FltTopic const& topic : topics())
        for (std::string const& record : recordsOf(topic.bytes.substr(topic.begin, topic.end - topic.begin)))
            inTopics.insert(record);
    for (std::string const& record : recordsOf(everyRecordInBrief(1570).bytes()))
        EXPECT_EQ(inTopics.count(record), 1U) << "opcode " << FltUtils::word16At(record.data());
}

TEST_P(MutationTest, DatabaseWithASmallChangeIsConvertedAndUsedToTheEnd)
{
    Mutations const mutations(topic.bytes, topic.begin, topic.end);
    int refused = 0;
    // All changes are made by the soak program; these are taken evenly from them.
    std::size_t const step = isSanitized ? 31 : 7;
    std::size_t const everything = 5;
    for (std::size_t i = 0; i < mutations.size(); i += step) {
        SCOPED_TRACE(mutations.describe(i));
        Endured const endured =
            endure(mutations[i], i / step % everything == 0 ? Use::everything : Use::traverse);
        expectToBeSmall(endured);
        refused += endured.wasRefused ? 1 : 0;
    }
    EXPECT_LT(std::size_t(refused) * step, mutations.size() / 10);
}

INSTANTIATE_TEST_SUITE_P(Topic, MutationTest, testing::Range<std::size_t>(0, topics().size()), nameOfTopic);

TEST_P(RandomDatabaseTest, DatabasesOfRandomRecordsAreConvertedToTheEnd)
{
    static int const revisions[] = {11, 13, 14, 1420, 1421, 1500, 1540, 1570, 1580};
    int converted = 0;
    for (int i = 0; i < 1000; ++i) {
        FltWriter flt(revisions[below(std::size(revisions))]);
        for (unsigned records = 1 + below(60); records > 0; --records)
            addTo(flt);
        SCOPED_TRACE("database " + std::to_string(i));
        Endured const endured = endure(flt.bytes());
        expectToBeSmall(endured);
        converted += endured.wasRefused ? 0 : 1;
    }
    EXPECT_GT(converted, 900);
}

INSTANTIATE_TEST_SUITE_P(Seed, RandomDatabaseTest, testing::Values(1U, 2U, 3U, 4U));
