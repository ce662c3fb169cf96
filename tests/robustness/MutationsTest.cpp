#include "robustness/Mutations.h"

#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <set>

namespace
{

class MutationsTest : public testing::Test
{
protected:
    MutationsTest()
    {
        for (std::size_t i = 0; i < mutations.size(); ++i)
            all.insert(mutations[i]);
    }

    /// The database with a byte of the part changed.
    std::string with(std::size_t at, unsigned char value) const
    {
        std::string bytes = database;
        bytes[begin + at] = static_cast<char>(value);
        return bytes;
    }

    std::string const part = FltWriter().add("Group", {{"relativePriority", 258}}).lastRecord();
    std::size_t const begin = FltWriter().bytes().size();
    std::string const database = FltWriter().add("Group", {{"relativePriority", 258}}).pop().bytes();
    Mutations const mutations{database, begin, begin + part.size()};
    std::set<std::string> all;
};

TEST_F(MutationsTest, CutAtEachByte)
{
    for (std::size_t size = begin; size < begin + part.size(); ++size)
        EXPECT_EQ(all.count(database.substr(0, size)), 1U) << size;
}

TEST_F(MutationsTest, ChangeEachByteAndEachBit)
{
    for (std::size_t at = 0; at < part.size(); ++at) {
        auto const byte = static_cast<unsigned char>(part[at]);
        for (unsigned const value : {byte + 1U, byte - 1U, 0U, 255U, byte ^ 1U, byte ^ 16U, byte ^ 128U})
            EXPECT_EQ(all.count(with(at, static_cast<unsigned char>(value))), 1U) << at << ' ' << value;
    }
}

TEST_F(MutationsTest, PutLimitsIntoEachLengthAndEachWord)
{
    std::string bytes = database;
    bytes.replace(begin + 2, 2, "\x7f\xff", 2);
    EXPECT_EQ(all.count(bytes), 1U);
    bytes = database;
    bytes.replace(begin + 12, 4, "\x80\0\0\1", 4);
    EXPECT_EQ(all.count(bytes), 1U);
}

TEST_F(MutationsTest, LeaveWhatIsAroundThePartAlone)
{
    for (std::string const& bytes : all) {
        EXPECT_EQ(bytes.substr(0, begin), database.substr(0, begin));
        std::string const after =
            bytes.size() >= begin + part.size() ? bytes.substr(begin + part.size()) : "";
        EXPECT_TRUE(after.empty() || after == database.substr(begin + part.size()));
    }
}

} // namespace
