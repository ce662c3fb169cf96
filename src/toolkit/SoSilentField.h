#pragma once

#include <Inventor/fields/SoField.h>

/// For fields that a node watches, to open a file as soon as it learns of its name.
namespace SoSilentField
{

/// Gives a field a value without telling anybody.
template <class Field, class Value>
void set(Field& field, Value const& value)
{
    SbBool const before = field.enableNotify(FALSE);
    field = value;
    field.enableNotify(before);
}

} // namespace SoSilentField
