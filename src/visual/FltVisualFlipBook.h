#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// A flip-book in a visual. Each child of its node is a frame, and one of them shows at a time; a null one
/// shows nothing. While nobody plays it, the first child shows.
struct FltVisualFlipBook {
    /// The child that shows while nobody plays it.
    static constexpr std::size_t first = 0;

    /// A frame on its turn.
    struct Step {
        std::size_t frame = 0; ///< The number of the child.
        double seconds = 0;    ///< How long it shows; above 0.
    };

    std::string name;        ///< As the database has it; empty without one.
    std::vector<Step> steps; ///< Of one loop, in the order in which they show. Never empty.
    std::uint32_t loops = 0; ///< How often it plays; 0 for without end.
    std::size_t number = 0;  ///< Orders all flip-books of a database.

    /// How long a loop takes.
    double seconds() const
    {
        double sum = 0;
        for (Step const& step : steps)
            sum += step.seconds;
        return sum;
    }
};
