#pragma once

#include <QString>

/// In what the numbers of a record's fields count.
namespace FieldUnit
{

/// "°", " s", " m", a space and the unit of lengths, or nothing for what has no unit.
/// @param field      its name, as records tell it
/// @param lengthUnit of the file: "feet"
QString of(QString const& field, QString const& lengthUnit);

} // namespace FieldUnit
