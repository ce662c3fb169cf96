#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// How often @p part stands in @p text; places may overlap.
inline int countOf(std::string_view text, std::string_view part)
{
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

inline bool holds(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

/// A text so many times in a row.
inline std::string repeated(std::string const& piece, std::size_t times)
{
    std::string text;
    text.reserve(piece.size() * times);
    for (; times > 0; --times)
        text += piece;
    return text;
}
