#include "gltf/GltfJson.h"

#include "messages/FltText.h"

#include <algorithm>
#include <cmath>
#include <limits>

double GltfValues::readable(double number)
{
    constexpr double most = std::numeric_limits<double>::max();
    return std::isnan(number) ? 0 : std::clamp(number, -most, most) + 0.0; // without the sign of -0
}

GltfJson GltfValues::list(SbVec3d const& vector)
{
    return GltfJson::array({readable(vector[0]), readable(vector[1]), readable(vector[2])});
}

double GltfValues::part(double value)
{
    constexpr double sixDigits = 1e6;
    return value >= 0 ? std::round(std::min(value, 1.0) * sixDigits) / sixDigits : 0;
}

std::string GltfValues::text(std::string_view words)
{
    std::string result = FltText::utf8(words);
    auto const isControl = [](char character) {
        return static_cast<unsigned char>(character) < ' ' || character == '\x7f';
    };
    std::replace_if(result.begin(), result.end(), isControl, ' ');
    return result;
}

std::string GltfValues::lastPart(std::string_view path)
{
    return text(path.substr(path.find_last_of("/\\") + 1)); // the whole path without such a character
}
