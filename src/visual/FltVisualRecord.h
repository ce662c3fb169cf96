#pragma once

#include <cstdint>

/// The record that a part of a visual comes from.
struct FltVisualRecord {
    /// In place of an offset, for what no record made.
    static constexpr std::uint64_t none = ~std::uint64_t(0);

    std::uint64_t offset = none; ///< Of its first byte in the file.
    std::uint32_t file = 0;      ///< In the list of files.
};
