#include "model/FltVertex.h"

#include <cmath>
#include <cstddef>

namespace
{

template <class Value, std::size_t count>
void mix(Value const (&from)[count], Value const (&to)[count], double part, Value (&mixed)[count])
{
    for (std::size_t i = 0; i < count; ++i)
        mixed[i] =
            static_cast<Value>(static_cast<double>(from[i]) * (1 - part) + static_cast<double>(to[i]) * part);
}

std::uint32_t mixed(std::uint32_t from, std::uint32_t to, double part)
{
    std::uint32_t color = 0;
    for (int const shift : {0, 8, 16, 24})
        color |= static_cast<std::uint32_t>(
                     std::lround((from >> shift & 0xff) * (1 - part) + (to >> shift & 0xff) * part))
                 << shift;
    return color;
}

} // namespace

FltVertex FltVertex::between(FltVertex const& from, FltVertex const& to, double part)
{
    FltVertex vertex;
    mix(from.position, to.position, part, vertex.position);
    mix(from.normal, to.normal, part, vertex.normal);
    mix(from.uv, to.uv, part, vertex.uv);
    vertex.color = mixed(from.color, to.color, part);
    vertex.flags = static_cast<std::uint8_t>(from.flags & to.flags);
    return vertex;
}
