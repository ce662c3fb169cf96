#include "view/PlaceReadout.h"

#include <cmath>

namespace
{

/// Without what transforms add to a zero.
QString numberOf(double value, int digits = 10) // centimetres in the coordinates of a map
{
    constexpr double finest = 1e-9;
    return QString::number(std::abs(value) < finest ? 0 : value, 'g', digits);
}

/// "48.5000090° N"
QString degrees(double value, char const* positive, char const* negative)
{
    constexpr int decimals = 7; // about a centimetre
    return QString::number(std::abs(value), 'f', decimals) + "° " + (value < 0 ? negative : positive);
}

} // namespace

PlaceReadout::PlaceReadout(FltDatabaseInfo const& info, bool isInMetres)
    : projection(info), offset{info.offset[0], info.offset[1], info.offset[2]}, isInMetres(isInMetres),
      storedUnit(FltDatabaseInfo::nameOf(info.unit))
{
}

QString PlaceReadout::unitName() const
{
    return isInMetres ? QStringLiteral("m") : storedUnit;
}

QString PlaceReadout::textOf(SbVec3f const& place) const
{
    std::array<double, 3> stored{};
    double const scale = isInMetres ? projection.metresInUnit() : 1;
    for (int axis = 0; axis < 3; ++axis) {
        auto const i = static_cast<std::size_t>(axis);
        stored[i] = (static_cast<double>(place[axis]) + offset[i]) / scale;
    }
    QString const words = QString::fromStdString(projection.describe());
    QString earth = "(" + words + ")";
    if (auto const onEarth = projection.placeOf(stored))
        earth = degrees(onEarth->latitude, "N", "S") + ", " + degrees(onEarth->longitude, "E", "W") + ", " +
                numberOf(onEarth->height) + " m " + earth;
    constexpr int digits = 6;
    return QString("x %1  y %2  z %3 %4  |  database %5  %6  %7 %8  |  %9")
        .arg(numberOf(static_cast<double>(place[0]), digits), numberOf(static_cast<double>(place[1]), digits),
             numberOf(static_cast<double>(place[2]), digits), unitName(), numberOf(stored[0]),
             numberOf(stored[1]), numberOf(stored[2]), storedUnit, earth);
}
