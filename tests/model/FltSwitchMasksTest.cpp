#include "model/FltSwitchMasks.h"

#include "records/FltOpcode.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>

namespace
{

using Words = std::vector<std::uint32_t>;

FltSwitchMasks masksOf(int masks, int wordsPerMask, FltValue const& words)
{
    FltWriter flt;
    flt.add("Switch", {{"indexOfCurrentMask", 1},
                       {"numberOfMasks", masks},
                       {"numberOf32BitWordsPerMask", wordsPerMask},
                       {"masks", words}});
    std::string const bytes = flt.bytes().substr(flt.lastOffset());
    return FltSwitchMasks({bytes.data(), static_cast<std::uint32_t>(bytes.size()),
                           static_cast<std::uint32_t>(FltOpcode::switchNode), 0});
}

} // namespace

TEST(FltSwitchMasks, holdTheWordsOfAllMasks)
{
    FltSwitchMasks const masks = masksOf(2, 2, {1, 2, 3, 4});
    EXPECT_EQ(masks.currentMask, 1);
    EXPECT_EQ(masks.maskCount, 2);
    EXPECT_EQ(masks.wordsPerMask, 2);
    EXPECT_EQ(masks.words, (Words{1, 2, 3, 4}));
}

TEST(FltSwitchMasks, holdNoMoreThanTheCountsSay)
{
    EXPECT_EQ(masksOf(1, 1, {1, 2, 3}).words, Words{1});
}

TEST(FltSwitchMasks, holdNoMoreThanTheRecord)
{
    EXPECT_EQ(masksOf(1'000'000'000, 1'000'000'000, {1, 2, 3}).words, (Words{1, 2, 3}));
}

TEST(FltSwitchMasks, holdNothingWhereACountIsNegative)
{
    EXPECT_EQ(masksOf(-1, 1, {1, 2}).words, Words());
    EXPECT_EQ(masksOf(2, -1, {1, 2}).words, Words());
    EXPECT_EQ(masksOf(2, 0, {1, 2}).words, Words());
}
