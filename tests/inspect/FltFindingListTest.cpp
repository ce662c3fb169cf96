#include "inspect/FltFindingList.h"

#include "messages/FltFindingNumber.h"
#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>

namespace
{

namespace Number = FltFindingNumber;

class FltFindingListTest : public testing::Test
{
protected:
    void add(int number, std::uint64_t offset, std::uint32_t node)
    {
        list.add(number, offset, 5, node, "it");
    }

    ScratchFolder folder;
    FltInventory const inventory = [this] {
        FltWriter flt;
        flt.push().add("Group", {{"idASCII", "g1"}}).add("Group", {{"idASCII", "g2"}}).pop();
        flt.save(folder / "a.flt");
        return FltInventory(folder / "a.flt");
    }();
    FltFindingList list{inventory};
};

} // namespace

TEST_F(FltFindingListTest, countsWhatIsFoundAgainInANode)
{
    add(Number::noArea, 100, 1);
    add(Number::noArea, 200, 1);
    add(Number::noArea, 300, 2);
    add(Number::noVertices, 400, 1);
    std::vector<FltFinding> const found = list.sorted();
    ASSERT_EQ(found.size(), 3U);
    EXPECT_EQ(found[0].count, 2U);
    EXPECT_EQ(found[0].offset, 100);
    EXPECT_EQ(found[0].node, "g1");
    EXPECT_EQ(found[0].file, folder / "a.flt");
    EXPECT_EQ(found[1].count, 1U);
    EXPECT_EQ(found[1].node, "g2");
    EXPECT_EQ(found[2].kind->number, Number::noVertices);
}

TEST_F(FltFindingListTest, sortsByKindThenByPlace)
{
    list.addHere(Number::repeatedIndex, 10, 0, "c");
    list.addHere(Number::zeroLength, 30, 0, "b");
    list.addHere(Number::zeroLength, 20, 0, "a");
    std::string order;
    for (FltFinding const& finding : list.sorted())
        order += finding.text;
    EXPECT_EQ(order, "abc");
}

TEST_F(FltFindingListTest, keepsAThousandOfAKindAndCountsTheOthers)
{
    for (std::uint64_t i = 0; i < FltFindingList::mostOfAKind; ++i)
        EXPECT_NE(list.addHere(Number::repeatedIndex, 0, 0, ""), nullptr);
    EXPECT_TRUE(list.leftOut().empty());
    EXPECT_EQ(list.addHere(Number::repeatedIndex, 0, 0, ""), nullptr);
    EXPECT_NE(list.addHere(Number::zeroLength, 0, 0, ""), nullptr) << "another kind";
    EXPECT_EQ(list.leftOut(), (std::map<int, std::uint64_t>{{Number::repeatedIndex, 1}}));
    EXPECT_EQ(list.sorted().size(), FltFindingList::mostOfAKind + 1);
}

TEST_F(FltFindingListTest, countsAKindThatIsFullOnceForEachNode)
{
    for (std::uint64_t i = 0; i < FltFindingList::mostOfAKind; ++i)
        list.addHere(Number::noArea, 0, 0, "");
    add(Number::noArea, 100, 1);
    add(Number::noArea, 200, 1);
    EXPECT_EQ(list.leftOut().at(Number::noArea), 1U);
    for (FltFinding const& finding : list.sorted())
        EXPECT_EQ(finding.count, 1U);
}
