#include "convert/FltVertexOffsets.h"

#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace
{

class FltVertexOffsetsTest : public testing::Test
{
protected:
    void add(unsigned long offset, int index) { offsets.add(offset, {index, 40, 1}); }

    int idAt(unsigned long offset) { return offsets.find(offset).id; }
    int indexAt(unsigned long offset) { return offsets.find(offset).index; }

    std::vector<std::pair<unsigned long, int>> all() const
    {
        std::vector<std::pair<unsigned long, int>> found;
        offsets.forEach([&found](unsigned long offset, FltVertexOffsets::Entry const& entry) {
            found.emplace_back(offset, entry.index);
            return true;
        });
        return found;
    }

    FltVertexOffsets offsets;
};

TEST_F(FltVertexOffsetsTest, EveryVertexOfAPaletteIsFoundByItsOffsetAlone)
{
    constexpr unsigned lengths[] = {40, 56, 64, 48, 1, 2, 300, 65535, 4};
    std::vector<unsigned long> added;
    unsigned long offset = 8;
    for (int i = 0; i < 500; ++i) {
        add(offset, i);
        added.push_back(offset);
        offset += lengths[i % 9];
    }
    for (int i = 499; i >= 0; --i) {
        unsigned long const at = added[static_cast<std::size_t>(i)];
        EXPECT_EQ(indexAt(at), i);
        EXPECT_EQ(idAt(at), 1);
    }
    EXPECT_EQ(idAt(7), 0);
    EXPECT_EQ(idAt(9), 0);
    EXPECT_EQ(idAt(offset), 0);
    EXPECT_EQ(idAt(~0UL), 0);
}

TEST_F(FltVertexOffsetsTest, AnOffsetThatNobodyKnowsIsEnteredWithZeros)
{
    add(8, 5);
    FltVertexOffsets::Entry const entry = offsets.find(20);
    EXPECT_EQ(entry.index, 0);
    EXPECT_EQ(entry.size, 0);
    EXPECT_EQ(entry.id, 0);
    EXPECT_EQ(all(), (std::vector<std::pair<unsigned long, int>>{{8, 5}, {20, 0}}));
}

TEST_F(FltVertexOffsetsTest, AVertexReplacesWhatWasEnteredAtItsOffset)
{
    EXPECT_EQ(idAt(48), 0);
    EXPECT_EQ(idAt(8), 0);
    EXPECT_EQ(idAt(1000), 0);
    add(8, 3);
    add(48, 4);
    add(48, 5); // a record without length is followed by one at the same place
    EXPECT_EQ(indexAt(8), 3);
    EXPECT_EQ(indexAt(48), 5);
    EXPECT_EQ(all(), (std::vector<std::pair<unsigned long, int>>{{8, 3}, {48, 5}, {1000, 0}}));
}

TEST_F(FltVertexOffsetsTest, AVertexFarBeyondAllOthersIsFoundToo)
{
    add(8, 1);
    add(4000000000000UL, 2);
    add(4000000000040UL, 3);
    EXPECT_EQ(indexAt(4000000000000UL), 2);
    EXPECT_EQ(indexAt(4000000000040UL), 3);
    EXPECT_EQ(all(), (std::vector<std::pair<unsigned long, int>>{
                         {8, 1}, {4000000000000UL, 2}, {4000000000040UL, 3}}));
}

TEST_F(FltVertexOffsetsTest, AWalkEndsWhenItsActionSaysSo)
{
    add(8, 0);
    add(48, 1);
    offsets.find(20);
    for (int most : {1, 2, 3}) {
        int visited = 0;
        offsets.forEach([&](unsigned long, FltVertexOffsets::Entry const&) { return ++visited < most; });
        EXPECT_EQ(visited, most);
    }
}

} // namespace
