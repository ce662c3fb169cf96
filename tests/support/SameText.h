#pragma once

#include <algorithm>
#include <cstddef>
#include <gtest/gtest.h>
#include <string>

/// Expects two long texts to be the same, byte for byte, and shows where they part.
inline void expectSameText(std::string const& text, std::string const& expected)
{
    if (text == expected)
        return;
    auto const parting = std::mismatch(text.begin(), text.end(), expected.begin(), expected.end());
    auto const at = static_cast<std::size_t>(parting.first - text.begin());
    std::size_t const from = at > 300 ? at - 300 : 0;
    ADD_FAILURE() << "They part at byte " << at << ".\n--- is:\n"
                  << text.substr(from, 600) << "\n--- expected:\n"
                  << expected.substr(std::min(from, expected.size()), 600);
}
