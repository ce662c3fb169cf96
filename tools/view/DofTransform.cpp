#include "view/DofTransform.h"

#include <Inventor/SbRotation.h>
#include <Inventor/SbVec3d.h>
#include <Inventor/SbVec3f.h>
#include <cmath>
#include <nlohmann/json.hpp>
#include <string>

namespace
{

float radians(double degrees)
{
    return static_cast<float>(degrees * M_PI / 180);
}

SbVec3f single(SbVec3d const& vector)
{
    return {static_cast<float>(vector[0]), static_cast<float>(vector[1]), static_cast<float>(vector[2])};
}

/// The coordinate system with an origin, a point on its x axis and one in its xy plane. Without such points,
/// or with points that make none, the axes are those of the parent.
SbMatrix localSystem(SbVec3d const& origin, SbVec3d const& onX, SbVec3d const& inXY)
{
    SbVec3d x = onX - origin;
    SbVec3d z = x.cross(inXY - origin);
    SbMatrix system = SbMatrix::identity();
    bool const isFinite = std::isfinite(z.dot(z)) && std::isfinite(origin.dot(origin));
    if (isFinite && x.normalize() > 0 && z.normalize() > 0) {
        SbVec3d const y = z.cross(x);
        for (int i = 0; i < 3; ++i) {
            system[0][i] = static_cast<float>(x[i]);
            system[1][i] = static_cast<float>(y[i]);
            system[2][i] = static_cast<float>(z[i]);
        }
    }
    for (int i = 0; isFinite && i < 3; ++i)
        system[3][i] = static_cast<float>(origin[i]);
    return system;
}

double usableScale(double scale)
{
    return scale != 0 && std::isfinite(scale) ? scale : 1;
}

using Json = nlohmann::ordered_json;

/// A field that isn't a number, as NaN, counts as 0.
double number(Json const& fields, std::string const& name)
{
    auto const found = fields.find(name);
    return found != fields.end() && found->is_number() ? found->get<double>() : 0;
}

bool flag(Json const& fields, std::string const& name)
{
    auto const flags = fields.find("flags");
    return flags != fields.end() && flags->value(name, false);
}

SbVec3d pointOf(Json const& fields, std::string const& which)
{
    auto const at = [&](char const* axis) {
        return number(fields, axis + which + "DOFLocalCoordinateSystem");
    };
    return {at("X"), at("Y"), at("Z")};
}

DofValue move(Json const& fields, char const* name, std::string const& axis)
{
    return {name,
            "",
            number(fields, axis + "MinValue"),
            number(fields, axis + "MaxValue"),
            number(fields, axis + "CurrentValue"),
            number(fields, axis + "Increment"),
            flag(fields, std::string(name) + "TranslationIsLimited"),
            false};
}

DofValue angle(Json const& fields, char const* name, std::string const& turn)
{
    return {name,
            "°",
            number(fields, "minimum" + turn),
            number(fields, "max" + turn),
            number(fields, "current" + turn),
            number(fields, "incrementIn" + turn),
            flag(fields, std::string(name) + "RotationIsLimited"),
            false};
}

DofValue scale(Json const& fields, char const* name, std::string const& axis)
{
    return {name,
            "",
            number(fields, axis + "MinScale"),
            number(fields, axis + "MaxScale"),
            number(fields, axis + "CurrentScale"),
            number(fields, axis + "IncrementForScale"),
            flag(fields, std::string(1, name[0]) + "ScaleIsLimited"),
            true};
}

SbMatrix turn(SbVec3f const& axis, double degrees)
{
    SbMatrix matrix;
    matrix.setRotate(SbRotation(axis, radians(degrees)));
    return matrix;
}

} // namespace

DofTransform::DofTransform(nlohmann::ordered_json const& fields)
    : toParent(localSystem(pointOf(fields, "OriginOf"), pointOf(fields, "PointOnXAxisOf"),
                           pointOf(fields, "PointInXYPlaneOf")))
{
    described = {{
        move(fields, "x", "X"),
        move(fields, "y", "Y"),
        move(fields, "z", "Z"),
        angle(fields, "pitch", "Pitch"),
        angle(fields, "roll", "Roll"),
        angle(fields, "yaw", "Yaw"),
        scale(fields, "x scale", "X"),
        scale(fields, "y scale", "Y"),
        scale(fields, "z scale", "Z"),
    }};
}

DofTransform::Values DofTransform::current() const
{
    Values values = {};
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = described[i].isScale ? usableScale(described[i].current) : described[i].current;
    return values;
}

SbMatrix DofTransform::matrix(Values const& values) const
{
    SbMatrix result = toParent.inverse();
    SbMatrix step;
    step.setScale(single(SbVec3d(usableScale(values[6]), usableScale(values[7]), usableScale(values[8]))));
    result.multRight(step);
    result.multRight(turn(SbVec3f(0, 1, 0), values[4]));
    result.multRight(turn(SbVec3f(1, 0, 0), values[3]));
    result.multRight(turn(SbVec3f(0, 0, 1), values[5]));
    step.setTranslate(single(SbVec3d(values[0], values[1], values[2])));
    result.multRight(step);
    result.multRight(toParent);
    return result;
}
