#include "convert/FltMaterialSlots.h"

#include "toolkit/LargePages.h"

#include <Inventor/nodes/SoMaterial.h>
#include <cstddef>

namespace
{

FltMaterialFields between()
{
    FltMaterialFields fields;
    fields.shininess = 0;
    return fields;
}

/// The field takes the values over and frees them.
template <class Field, class Value>
void write(Field& field, std::vector<FltMaterialFields> const& slots, Value FltMaterialFields::*value)
{
    auto* const values = new Value[slots.size()];
    LargePages::useIn(values, values + slots.size());
    for (std::size_t i = 0; i < slots.size(); ++i)
        values[i] = slots[i].*value;
    field.setValuesPointer(static_cast<int>(slots.size()), values);
    field.enableDeleteValues();
}

} // namespace

void FltMaterialSlots::set(int index, FltMaterialFields const& fields)
{
    auto const at = static_cast<std::size_t>(index);
    if (at < slots.size()) {
        slots[at] = fields;
        return;
    }
    if (at > slots.size()) {
        if (slots.empty())
            slots.emplace_back(); // what a new material has
        slots.resize(at, between());
    }
    LargePages::add(slots, fields);
}

void FltMaterialSlots::writeTo(SoMaterial& material) const
{
    if (slots.empty())
        return;
    write(material.ambientColor, slots, &FltMaterialFields::ambientColor);
    write(material.diffuseColor, slots, &FltMaterialFields::diffuseColor);
    write(material.specularColor, slots, &FltMaterialFields::specularColor);
    write(material.emissiveColor, slots, &FltMaterialFields::emissiveColor);
    write(material.shininess, slots, &FltMaterialFields::shininess);
    write(material.transparency, slots, &FltMaterialFields::transparency);
}
