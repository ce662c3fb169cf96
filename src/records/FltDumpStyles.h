#pragma once

#include <cstddef>

/// How a field prints in the dump where it isn't "name: value": the third argument of a line in a record's
/// `fields`. See FltFields.h.
namespace dumpAs
{

struct Nothing {
};
struct Heading {
};
struct Pointer {
};
struct Character {
};
struct Unsigned {
};
struct Text {
    void const* end;
};
template <std::size_t size>
struct LabelledText {
    char const (&label)[size];
    void const* end;
};
struct TextWithoutEnd {
    void const* end;
};
struct List {
    char const* separator;
    char const* label;
    char const* closing;
};
struct Rows {
    int columns;
};
template <std::size_t size>
struct Piece {
    char const (&label)[size];
};

/// Not at all: reserved bytes, and what is shown by lines of its own.
constexpr Nothing nothing;

/// "name: " alone on its line, as flags do whose bits follow.
constexpr Heading heading;

/// As the stream writes an address: hexadecimal after "0x", and "0" for zero.
constexpr Pointer pointer;

/// A byte as the character itself.
constexpr Character character;

/// A number widened to 32 bits by its sign, and printed without it.
constexpr Unsigned unsignedNumber;

/// Text up to its first zero. Without one it runs on into the members after it.
/// @param end where it stops at the latest: the end of the object that holds it
constexpr Text text(void const* end)
{
    return {end};
}
template <std::size_t size>
constexpr LabelledText<size> text(char const (&label)[size], void const* end)
{
    return {label, end};
}

/// Text as above, with no end of line after it.
constexpr TextWithoutEnd textWithoutEnd(void const* end)
{
    return {end};
}

/// Values on one line after @p label, or after "name: " if it is null.
constexpr List list(char const* separator, char const* label = nullptr, char const* closing = "")
{
    return {separator, label, closing};
}

/// Rows of a matrix without a label, of so many values each.
constexpr Rows rows(int columns)
{
    return {columns};
}

/// The label and the value with no end of line: endLine() comes after the last piece.
template <std::size_t size>
constexpr Piece<size> piece(char const (&label)[size])
{
    return {label};
}

} // namespace dumpAs
