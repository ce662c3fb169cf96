#include "Noise.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

double lattice(int x, int y)
{
    std::uint32_t h = static_cast<std::uint32_t>(x) * 374761393u + static_cast<std::uint32_t>(y) * 668265263u;
    h = (h ^ h >> 13) * 1274126177u;
    return static_cast<double>((h ^ h >> 16) & 0xffff) / 65535;
}

double smoothStep(double low, double high, double value)
{
    double const t = std::clamp((value - low) / (high - low), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

double noise(double x, double y, double size)
{
    double const fx = std::floor(x / size), fy = std::floor(y / size);
    int const ix = static_cast<int>(fx), iy = static_cast<int>(fy);
    double const sx = smoothStep(0, 1, x / size - fx), sy = smoothStep(0, 1, y / size - fy);
    double const low = lattice(ix, iy) + (lattice(ix + 1, iy) - lattice(ix, iy)) * sx;
    double const high = lattice(ix, iy + 1) + (lattice(ix + 1, iy + 1) - lattice(ix, iy + 1)) * sx;
    return low + (high - low) * sy;
}
