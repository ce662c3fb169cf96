#pragma once

#include <array>
#include <string_view>

/// A side from which a picture looks, by its name on the command line.
struct NamedView {
    std::string_view name;
    float azimuth;   ///< Degrees, clockwise from north.
    float elevation; ///< Degrees above the horizon.
};

inline constexpr std::array<NamedView, 8> namedViews{{{"top", 180, 90},
                                                      {"bottom", 180, -90},
                                                      {"front", 180, 0},
                                                      {"back", 0, 0},
                                                      {"left", 270, 0},
                                                      {"right", 90, 0},
                                                      {"side", 90, 0},
                                                      {"iso", 135, 35.26F}}};
