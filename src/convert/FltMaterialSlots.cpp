#include "convert/FltMaterialSlots.h"

#include "convert/FltFieldValues.h"

#include <Inventor/nodes/SoMaterial.h>
#include <cstddef>

namespace
{

/// @param first what a new material has at the first position
template <class Value>
void write(std::vector<Value>& values, std::size_t index, Value const& value, Value const& between,
           Value const& first)
{
    if (index < values.size()) {
        values[index] = value;
        return;
    }
    if (values.empty() && index > 0)
        values.push_back(first);
    values.resize(index, between);
    values.push_back(value);
}

} // namespace

void FltMaterialSlots::set(int index, FltMaterialFields const& fields)
{
    static FltMaterialFields const standard;
    auto const at = static_cast<std::size_t>(index);
    auto const setColor = [&](std::vector<SbColor>& colors, SbColor FltMaterialFields::*color) {
        write(colors, at, fields.*color, standard.*color, standard.*color);
    };
    setColor(ambientColor, &FltMaterialFields::ambientColor);
    setColor(diffuseColor, &FltMaterialFields::diffuseColor);
    setColor(specularColor, &FltMaterialFields::specularColor);
    setColor(emissiveColor, &FltMaterialFields::emissiveColor);
    write(shininess, at, fields.shininess, 0.0F, standard.shininess);
    write(transparency, at, fields.transparency, 0.0F, standard.transparency);
}

void FltMaterialSlots::writeTo(SoMaterial& material) const
{
    if (shininess.empty())
        return;
    setFieldValues(material.ambientColor, ambientColor);
    setFieldValues(material.diffuseColor, diffuseColor);
    setFieldValues(material.specularColor, specularColor);
    setFieldValues(material.emissiveColor, emissiveColor);
    setFieldValues(material.shininess, shininess);
    setFieldValues(material.transparency, transparency);
}
