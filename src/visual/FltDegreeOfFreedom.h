#pragma once

#include <string>

/// A degree of freedom of a database: a part that can be moved, such as a door.
struct FltDegreeOfFreedom {
    /// Distances are in the database's units, angles in degrees.
    struct Range {
        double minimum = 0;
        double maximum = 0;
        double current = 0;
        double step = 0;
        bool isLimited = false; ///< Whether it may not leave what lies between minimum and maximum.
    };

    std::string name;
    Range translation[3]; ///< Along x, y and z of its own frame.
    Range pitch;          ///< About x.
    Range roll;           ///< About y.
    Range yaw;            ///< About z.
    Range scale[3];       ///< Along x, y and z. A current value of 0 counts as 1.
};
