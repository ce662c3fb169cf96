#include "gltf/FltBase64.h"

#include <cstddef>
#include <cstdint>

void FltBase64::append(std::string& text, std::string_view bytes)
{
    constexpr std::string_view letters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr std::size_t groupBytes = 3;
    constexpr std::size_t groupLetters = 4;
    std::size_t const begin = text.size();
    text.resize(begin + (bytes.size() + groupBytes - 1) / groupBytes * groupLetters, '=');
    std::size_t letter = begin;
    for (std::size_t at = 0; at < bytes.size(); at += groupBytes, letter += groupLetters) {
        std::size_t const count = bytes.size() - at < groupBytes ? bytes.size() - at : groupBytes;
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < groupBytes; ++i)
            group = group << 8 | (i < count ? static_cast<unsigned char>(bytes[at + i]) : 0U);
        for (std::size_t i = 0; i <= count; ++i)
            text[letter + i] = letters[group >> (18 - 6 * i) & 63U];
    }
}
