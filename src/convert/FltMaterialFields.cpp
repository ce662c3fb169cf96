#include "convert/FltMaterialFields.h"

#include <Inventor/nodes/SoMaterial.h>

namespace
{

template <class Field, class Value>
void write(Field& field, int index, Value const& value, Value const& between)
{
    for (int i = field.getNum(); i < index; ++i)
        field.set1Value(i, between);
    field.set1Value(index, value);
}

template <class Field, class Value>
void read(Field const& field, int index, Value& value)
{
    if (index >= 0 && index < field.getNum())
        value = field[index];
}

} // namespace

void FltMaterialFields::writeTo(SoMaterial& material, int index) const
{
    FltMaterialFields const standard;
    write(material.ambientColor, index, ambientColor, standard.ambientColor);
    write(material.diffuseColor, index, diffuseColor, standard.diffuseColor);
    write(material.specularColor, index, specularColor, standard.specularColor);
    write(material.emissiveColor, index, emissiveColor, standard.emissiveColor);
    write(material.shininess, index, shininess, 0.0F);
    write(material.transparency, index, transparency, 0.0F);
}

FltMaterialFields FltMaterialFields::readFrom(SoMaterial const& material, int index)
{
    FltMaterialFields fields;
    read(material.ambientColor, index, fields.ambientColor);
    read(material.diffuseColor, index, fields.diffuseColor);
    read(material.specularColor, index, fields.specularColor);
    read(material.emissiveColor, index, fields.emissiveColor);
    read(material.shininess, index, fields.shininess);
    read(material.transparency, index, fields.transparency);
    return fields;
}
