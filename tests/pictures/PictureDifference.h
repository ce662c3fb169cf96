#pragma once

#include "tools/ShotFile.h"

#include <algorithm>
#include <cstdlib>

/// How much two pictures differ.
namespace PictureDifference
{

/// The mean difference of two pictures of one size in their worst square of 15 by 15 pixels, from 0 to 255: a
/// thing that is missing counts in full where it was, however small it is.
inline double worstMean(ShotFile const& one, ShotFile const& other)
{
    constexpr unsigned side = 15;
    double worst = 0;
    for (unsigned top = 0; top + side <= one.height; top += side)
        for (unsigned left = 0; left + side <= one.width; left += side) {
            double sum = 0;
            for (unsigned y = top; y < top + side; ++y)
                for (unsigned x = left; x < left + side; ++x)
                    for (std::size_t channel = 0; channel < 3; ++channel)
                        sum += std::abs(one.at(x, y)[channel] - other.at(x, y)[channel]);
            worst = std::max(worst, sum / (side * side * 3));
        }
    return worst;
}

} // namespace PictureDifference
