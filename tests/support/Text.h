#pragma once

#include <string_view>

/// How often @p part stands in @p text; places may overlap.
inline int countOf(std::string_view text, std::string_view part)
{
    int count = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}
