#pragma once

#include <string>

/// A degree of freedom of a database: a part that can be moved, such as a door.
struct FltDegreeOfFreedom {
    /// Distances are in the database's units, angles in degrees.
    struct Range {
        double minimum = 0;     ///< The lower end of where it may go.
        double maximum = 0;     ///< The upper end.
        double current = 0;     ///< Where it is.
        double step = 0;        ///< How far it goes at a time, as the modeller means it.
        bool isLimited = false; ///< Whether it may not leave what lies between minimum and maximum.
    };

    std::string name;     ///< Of the record; several may have it.
    Range translation[3]; ///< Along x, y and z of its own frame.
    Range pitch;          ///< About x.
    Range roll;           ///< About y.
    Range yaw;            ///< About z.
    Range scale[3];       ///< Along x, y and z. A current value of 0 counts as 1.
};
