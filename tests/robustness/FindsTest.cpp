#include "robustness/Endurance.h"
#include "support/ScratchFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

TEST(FindsTest, WhatTheFuzzersFoundIsConvertedAndUsedToTheEnd)
{
    QuietToolkit const quiet;
    SmallVertexPalettes const small(16);
    int finds = 0;
    for (auto const& entry : std::filesystem::directory_iterator(VELLOREADER_FINDS)) {
        SCOPED_TRACE(entry.path().string());
        endure(contentsOf(entry.path().string()), Use::everything);
        ++finds;
    }
    EXPECT_GT(finds, 0);
}
