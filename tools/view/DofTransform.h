#pragma once

#include <Inventor/SbMatrix.h>
#include <array>
#include <nlohmann/json_fwd.hpp>

/// One of the nine values that a degree of freedom has.
struct DofValue {
    char const* name = "";
    char const* unit = "";
    double least = 0;
    double most = 0;
    double current = 0;
    double step = 0; ///< 0 if the record says nothing.
    bool isLimited = false;
    bool isScale = false;
};

/// The movement that a degree of freedom allows: a scale, then turns about y (roll), x (pitch) and z (yaw),
/// then a move, in the coordinate system of the record.
class DofTransform
{
public:
    static constexpr int valueCount = 9;
    using Values =
        std::array<double, valueCount>; ///< Moves, then pitch, roll and yaw in degrees, then scales.

    /// @param fields of a degree of freedom, as FltRecordJson gives them
    explicit DofTransform(nlohmann::ordered_json const& fields);

    /// The values with their limits, in the order of Values.
    std::array<DofValue, valueCount> const& values() const { return described; }

    /// The values that the record stores.
    Values current() const;

    /// What moves the points as they are stored to where values put them, for row vectors as the toolkit has
    /// them. A scale of 0 counts as 1.
    SbMatrix matrix(Values const& values) const;

private:
    std::array<DofValue, valueCount> described;
    SbMatrix toParent; ///< From the record's coordinate system.
};
