#include "toolkit/LargePages.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <numeric>
#include <vector>

TEST(LargePages, beginAtMultiplesOfTheirSize)
{
    std::unique_ptr<char[]> const bytes(new char[3 * LargePages::size]);
    char* const first = LargePages::firstFrom(bytes.get());
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(first) % LargePages::size, 0U);
    EXPECT_LT(first - bytes.get(), static_cast<std::ptrdiff_t>(LargePages::size));
    EXPECT_EQ(LargePages::firstFrom(first), first);
    EXPECT_EQ(LargePages::firstFrom(first + 1), first + LargePages::size);
}

TEST(LargePages, leaveTheBytesAsTheyAre)
{
    std::vector<unsigned char> bytes(5 * LargePages::size);
    std::iota(bytes.begin(), bytes.end(), static_cast<unsigned char>(0));
    std::vector<unsigned char> const before = bytes;
    LargePages::useIn(bytes.data(), bytes.data() + bytes.size());
    LargePages::useIn(bytes.data(), bytes.data() + 1);
    LargePages::useIn(bytes.data(), bytes.data());
    EXPECT_EQ(bytes, before);
}

TEST(LargePages, aListThatGrowsKeepsItsValuesAndMovesAFewTimes)
{
    constexpr int count = 2'000'000;
    std::vector<int> list;
    int moves = 0;
    for (int i = 0; i < count; ++i) {
        std::size_t const room = list.capacity();
        LargePages::add(list, i);
        moves += list.capacity() != room ? 1 : 0;
    }
    EXPECT_LE(moves, 22);
    std::vector<int> expected(count);
    std::iota(expected.begin(), expected.end(), 0);
    EXPECT_EQ(list, expected);
}

TEST(LargePages, roomForMoreIsMadeAtOnceAndOnlyWhereItIsMissing)
{
    std::vector<int> list = {1, 2, 3};
    LargePages::makeRoom(list, 100);
    EXPECT_GE(list.capacity(), 103U);
    EXPECT_EQ(list, (std::vector<int>{1, 2, 3}));
    int const* const place = list.data();
    LargePages::makeRoom(list, 100);
    EXPECT_EQ(list.data(), place);
}
