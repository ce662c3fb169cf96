#include "records/FltColumnBytes.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>

TEST(FltColumnBytes, keepWhatStoodThereWhenTheyGrow)
{
    FltColumnBytes bytes;
    std::string expected;
    for (int i = 0; i < 3000; ++i) {
        std::string const piece(static_cast<std::size_t>(i % 7), static_cast<char>('a' + i % 26));
        piece.copy(bytes.extend(piece.size()), piece.size());
        expected += piece;
    }
    EXPECT_EQ(std::string(bytes.data(), bytes.size()), expected);
    bytes.cut(5);
    EXPECT_EQ(std::string(bytes.data(), bytes.size()), expected.substr(0, 5));
}

TEST(FltColumnBytes, areEmptyAtFirstAndMayBeCutToNothing)
{
    FltColumnBytes bytes;
    EXPECT_EQ(bytes.size(), 0U);
    bytes.reserve(100);
    EXPECT_EQ(bytes.size(), 0U);
    bytes.cut(0);
    EXPECT_EQ(bytes.size(), 0U);
}

TEST(FltColumnBytes, sayThatThereIsNoRoom)
{
    FltColumnBytes bytes;
    *bytes.extend(1) = 'a';
    EXPECT_THROW(bytes.reserve(std::numeric_limits<std::size_t>::max() / 2 + 1), std::bad_alloc);
    EXPECT_EQ(std::string(bytes.data(), bytes.size()), "a");
}
