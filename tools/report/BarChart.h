#pragma once

#include <string>
#include <vector>

/// A chart of bars that stand side by side.
struct BarChart {
    struct Bar {
        std::string name; ///< Below the bar, where there is room.
        double value;     ///< From 0 on.
        std::string text; ///< What the value is, to people.
    };

    std::string title;
    std::vector<Bar> bars;

    /// As SVG.
    std::string svg() const;
};
