#pragma once

#include <cstdint>
#include <memory>

/// A text with a number, such as the name of a mask of the switch before it. The factory makes no object of
/// it.
struct FltRecordIndexedString {
    /// @param length of the record in bytes, opcode and length included
    explicit FltRecordIndexedString(unsigned int length) : length(length) {}

    unsigned int length;
    std::uint32_t index = 0;
    std::unique_ptr<char[]> text; ///< With a zero after it; null before the record is decoded.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("index", self.index);
        visit.rest("text", self.text, self.length > 4 ? self.length - 4 : 0); // after the index
    }
};
