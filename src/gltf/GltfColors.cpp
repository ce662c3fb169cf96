#include "gltf/GltfColors.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace
{

constexpr double mostOfWord = 65535;
constexpr double mostOfByte = 255;

std::array<std::uint16_t, 256> tableOfBytes()
{
    std::array<std::uint16_t, 256> table{};
    for (std::size_t i = 0; i < table.size(); ++i)
        table.at(i) = static_cast<std::uint16_t>(
            std::lround(mostOfWord * GltfColors::linear(static_cast<double>(i) / mostOfByte)));
    return table;
}

} // namespace

double GltfColors::linear(double part)
{
    constexpr double straightUpTo = 0.04045, straight = 12.92, offset = 0.055, exponent = 2.4;
    if (!(part > 0))
        return 0;
    part = std::min(part, 1.0);
    return part <= straightUpTo ? part / straight : std::pow((part + offset) / (1 + offset), exponent);
}

std::array<std::uint16_t, 4> GltfColors::linear(std::uint32_t packed)
{
    static std::array<std::uint16_t, 256> const table = tableOfBytes();
    constexpr std::uint32_t wordsPerByte = 257;
    return {table.at(packed >> 24), table.at(packed >> 16 & 0xff), table.at(packed >> 8 & 0xff),
            static_cast<std::uint16_t>((packed & 0xff) * wordsPerByte)};
}
