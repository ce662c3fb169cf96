#pragma once

#include <cstdint>
#include <iosfwd>
#include <string_view>

/// Writes the lines of a dump.
///
/// Every line is put together in place, handed to the stream in one piece, and ends with an end of line and a
/// flush. On a stream in its default state (decimal, precision 6, no width, classic locale) the numbers are
/// formatted by std::to_chars, which gives the same bytes as the stream; a stream in any other state formats
/// them itself. Integers of 8 bits print as numbers. Flag bits count from 0, the least significant.
class FltDump
{
public:
    /// "  (category)" and "-- Opcode: n  Length: n --".
    static void frame(std::ostream& os, std::string_view category, int opcode, unsigned int length);

    /// @name A label and its value
    /// @{
    static void line(std::ostream& os, std::string_view label);
    static void line(std::ostream& os, std::string_view label, std::int8_t value);
    static void line(std::ostream& os, std::string_view label, std::uint8_t value);
    static void line(std::ostream& os, std::string_view label, std::int16_t value);
    static void line(std::ostream& os, std::string_view label, std::uint16_t value);
    static void line(std::ostream& os, std::string_view label, std::int32_t value);
    static void line(std::ostream& os, std::string_view label, std::uint32_t value);
    static void line(std::ostream& os, std::string_view label, std::uint64_t value);
    static void line(std::ostream& os, std::string_view label, float value);
    static void line(std::ostream& os, std::string_view label, double value);
    static void line(std::ostream& os, std::string_view label, std::string_view text);
    /// @}

    /// @name Numbers in the label: "name[index] : ", value
    /// @{
    static void line(std::ostream& os, std::string_view before, std::int32_t index, std::string_view behind);
    static void line(std::ostream& os, std::string_view before, std::int32_t index, std::string_view behind,
                     std::int32_t value);
    static void line(std::ostream& os, std::string_view before, std::int32_t index, std::string_view behind,
                     std::string_view text);
    /// @}

    /// The byte itself as one character, also when it is zero.
    static void character(std::ostream& os, std::string_view label, char value);

    /// One bit of a flag word as 0 or 1.
    static void flag(std::ostream& os, std::string_view label, std::uint32_t word, int bit);

    /// All 32 bits of a word as 0 or 1, the most significant first.
    static void bits(std::ostream& os, std::uint32_t word);

    /// A word in the stream's form of a pointer, sign-extended: hexadecimal behind "0x", and "0" for zero.
    static void pointer(std::ostream& os, std::string_view label, std::int32_t word);
    static void pointer(std::ostream& os, std::string_view label, void const* address);

    /// A colour byte as a fraction of 255, worked out in single precision.
    static void colorByte(std::ostream& os, std::string_view label, std::uint8_t value);

    /// Text up to its first zero. A field without one runs on into the members behind it.
    /// @param end where the text stops at the latest: the end of the object that holds it
    static void text(std::ostream& os, std::string_view label, char const* text, void const* end);

    /// Text that a zero ends. Null prints as an empty text.
    static void text(std::ostream& os, std::string_view label, char const* text);

    /// Text as above up to @p end, with no end of line behind it.
    static void textWithoutEnd(std::ostream& os, std::string_view label, char const* text, void const* end);

    /// @name Several values on a line, @p separator between them and @p closing behind them
    /// @{
    static void list(std::ostream& os, std::string_view label, std::int32_t const* values, int count,
                     std::string_view separator, std::string_view closing = "");
    static void list(std::ostream& os, std::string_view label, float const* values, int count,
                     std::string_view separator, std::string_view closing = "");
    static void list(std::ostream& os, std::string_view label, double const* values, int count,
                     std::string_view separator, std::string_view closing = "");
    /// @}

    /// @name Rows of a matrix: "|  ", the values with two blanks behind each, "  |"
    /// @{
    static void rows(std::ostream& os, float const* values, int rowCount, int columnCount);
    static void rows(std::ostream& os, double const* values, int rowCount, int columnCount);
    /// @}
};
