#pragma once

#include "support/RecordText.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

/// Proves of a flag word that each bit alone turns the line of its own label from 0 to 1 and changes nothing
/// else in the dump, and that a bit without a label changes nothing at all.
inline void expectFlagLines(std::string_view record, std::string_view field, int bitCount,
                            std::map<int, std::string> const& labels, int revision = 1570)
{
    auto const dump = [&](unsigned flags) {
        return dumpOf(*decodeLast(FltWriter(revision).add(record, {{field, flags}})));
    };
    std::string const clear = dump(0);
    for (int bit = 0; bit < bitCount; ++bit) {
        std::string expected = clear;
        auto const label = labels.find(bit);
        if (label != labels.end()) {
            std::string const line = "\n" + label->second;
            std::size_t const at = clear.find(line + "0\n");
            ASSERT_NE(at, std::string::npos) << label->second;
            expected.replace(at + line.size(), 1, "1");
        }
        EXPECT_EQ(dump(1U << bit), expected) << "bit " << bit;
    }
}
