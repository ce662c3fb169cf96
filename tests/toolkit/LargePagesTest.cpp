#include "toolkit/LargePages.h"

#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <numeric>
#include <string>
#include <sys/mman.h>
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

namespace
{

/// Whether the system was asked for large pages where a byte stands.
bool isAskedAt(void const* byte)
{
    std::ifstream maps("/proc/self/smaps");
    auto const place = reinterpret_cast<std::uintptr_t>(byte);
    bool isThere = false;
    for (std::string line; std::getline(maps, line);) {
        std::uintptr_t begin = 0, end = 0;
        if (std::sscanf(line.c_str(), "%" SCNxPTR "-%" SCNxPTR " ", &begin, &end) == 2)
            isThere = begin <= place && place < end;
        else if (isThere && line.compare(0, 8, "VmFlags:") == 0)
            return line.find(" hg") != std::string::npos;
    }
    return false;
}

} // namespace

TEST(LargePages, areAskedForWhereAWholeOneFits)
{
    // Of the system itself: others may have asked for large pages where they had memory before.
    constexpr std::size_t count = 9 * LargePages::size;
    void* const memory = ::mmap(nullptr, count, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    char* const asked = LargePages::firstFrom(static_cast<char*>(memory));
    bool const isKnown = ::madvise(asked, LargePages::size, MADV_HUGEPAGE) == 0 && isAskedAt(asked);
    char* const first = asked + 4 * LargePages::size;
    LargePages::useIn(first - 1, first + LargePages::size - 1);
    EXPECT_FALSE(isAskedAt(first)) << "a byte is missing";
    LargePages::useIn(first - 1, first + LargePages::size);
    EXPECT_EQ(isAskedAt(first), isKnown);
    EXPECT_FALSE(isAskedAt(first - 1));
    EXPECT_FALSE(isAskedAt(first + LargePages::size));
    ::munmap(memory, count);
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
