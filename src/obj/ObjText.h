#pragma once

#include <Inventor/SbColor.h>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

/// The text of an OBJ or MTL file, line by line.
class ObjText
{
public:
    /// A line of numbers, to a millionth: what is none becomes 0.
    void line(std::string_view word, std::initializer_list<double> numbers)
    {
        written += word;
        for (double const number : numbers)
            add(number);
        written += '\n';
    }

    void line(std::string_view word, SbColor const& color)
    {
        line(word,
             {static_cast<double>(color[0]), static_cast<double>(color[1]), static_cast<double>(color[2])});
    }

    /// A line of one word, such as a name.
    void line(std::string_view word, std::string_view value)
    {
        written.append(word).append(" ").append(value).append("\n");
    }

    /// @name A line of corners
    /// @{
    void begin(std::string_view word) { written += word; }
    /// @param uv, normal 0 for none
    void corner(std::uint64_t position, std::uint64_t uv, std::uint64_t normal)
    {
        written += ' ';
        add(position);
        if (uv == 0 && normal == 0)
            return;
        written += '/';
        if (uv != 0)
            add(uv);
        if (normal != 0) {
            written += '/';
            add(normal);
        }
    }
    void end() { written += '\n'; }
    /// @}

    std::string const& text() const { return written; }

private:
    static constexpr int decimals = 6;
    using Room = std::array<char, 340>; ///< For a number: the largest has 309 digits before the point.

    void add(double number)
    {
        Room room;
        double const finite = std::isfinite(number) ? number : 0.0;
        char const* end =
            std::to_chars(room.begin(), room.end(), finite, std::chars_format::fixed, decimals).ptr;
        while (end[-1] == '0')
            --end;
        end -= end[-1] == '.' ? 1 : 0;
        std::string_view const digits(room.data(), static_cast<std::size_t>(end - room.data()));
        written.append(" ").append(digits == "-0" ? "0" : digits);
    }

    void add(std::uint64_t number)
    {
        Room room;
        written.append(room.data(), std::to_chars(room.begin(), room.end(), number).ptr);
    }

    std::string written;
};
