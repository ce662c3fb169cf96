#pragma once

#include <charconv>
#include <cstdint>
#include <cstring>

/// Numbers as text. Every function writes at @p at, where it needs `longest` characters of room at the most,
/// and returns the end of what it wrote.
class FltNumberText
{
public:
    static constexpr int longest = 24;

    /// A number as printf's "%g" writes it, to six digits: the same characters in every case, whatever the
    /// locale.
    static char* write(char* at, double value);

    /// @name Whole numbers, in decimal
    /// @{
    static char* write(char* at, std::int32_t value)
    {
        return isDigit(value) ? writeDigit(at, value) : writeLonger(at, value);
    }
    static char* write(char* at, std::uint32_t value)
    {
        return isDigit(value) ? writeDigit(at, value) : writeLonger(at, value);
    }
    static char* write(char* at, std::uint64_t value) { return std::to_chars(at, at + longest, value).ptr; }
    /// @}

    /// The fraction that a byte is of 255, worked out in single precision, as write() writes it.
    static char* writeFraction(char* at, std::uint8_t byte)
    {
        static Fractions const fractions;
        Fractions::Text const& text = fractions.texts[byte];
        std::memcpy(at, text.characters, sizeof text.characters);
        return at + text.size;
    }

    /// The fraction itself.
    static double fractionOf(std::uint8_t byte)
    {
        return static_cast<double>(static_cast<float>(byte) / 255.0F);
    }

private:
    /// Most fields of most records are zero, and fewer are above nine.
    /// @{
    template <class Number>
    static bool isDigit(Number value)
    {
        return static_cast<std::uint32_t>(value) <= 9;
    }
    template <class Number>
    static char* writeDigit(char* at, Number value)
    {
        *at = static_cast<char>('0' + value);
        return at + 1;
    }
    static char* writeLonger(char* at, std::int32_t value);
    static char* writeLonger(char* at, std::uint32_t value);
    /// @}

    /// The texts of all 256.
    struct Fractions {
        struct Text {
            char characters[15];
            std::uint8_t size;
        };
        Fractions();
        Text texts[256];
    };
};
