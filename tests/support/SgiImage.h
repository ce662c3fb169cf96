#pragma once

#include <string>

/// The bytes of a small picture in the SGI format, plain grey.
/// @param side how many pixels wide and high, below 256
inline std::string sgiImage(unsigned char side, unsigned char grey = 128)
{
    std::string bytes(512, '\0');
    char const header[] = {0x01, char(0xda), 0, 1, 0, 3, 0, char(side), 0, char(side), 0, 3};
    bytes.replace(0, sizeof header, header, sizeof header);
    bytes[19] = char(0xff); // the brightest value
    return bytes.append(std::string::size_type(side) * side * 3, char(grey));
}
