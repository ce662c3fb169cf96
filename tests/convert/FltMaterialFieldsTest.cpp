#include "convert/FltMaterialFields.h"

#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoMaterial.h>
#include <gtest/gtest.h>

namespace
{

/// Values that differ from each other and from all defaults.
FltMaterialFields someFields()
{
    FltMaterialFields fields;
    fields.ambientColor = SbColor(0.1F, 0, 0);
    fields.diffuseColor = SbColor(0, 0.3F, 0);
    fields.specularColor = SbColor(0, 0, 0.4F);
    fields.emissiveColor = SbColor(0.5F, 0.5F, 0);
    fields.shininess = 0.6F;
    fields.transparency = 0.7F;
    return fields;
}

void expectEqual(FltMaterialFields const& a, FltMaterialFields const& b)
{
    EXPECT_EQ(a.ambientColor, b.ambientColor);
    EXPECT_EQ(a.diffuseColor, b.diffuseColor);
    EXPECT_EQ(a.specularColor, b.specularColor);
    EXPECT_EQ(a.emissiveColor, b.emissiveColor);
    EXPECT_EQ(a.shininess, b.shininess);
    EXPECT_EQ(a.transparency, b.transparency);
}

TEST(FltMaterialFieldsTest, WhatIsWrittenAtAPositionIsReadThere)
{
    SoNodeRef<SoMaterial> const material(new SoMaterial);
    someFields().writeTo(*material, 0);
    expectEqual(FltMaterialFields::readFrom(*material, 0), someFields());
    EXPECT_EQ(material->diffuseColor.getNum(), 1);
}

TEST(FltMaterialFieldsTest, PositionsInBetweenGetTheDefaultColorsAndNoShininess)
{
    SoNodeRef<SoMaterial> const material(new SoMaterial);
    someFields().writeTo(*material, 3);
    FltMaterialFields between;
    between.shininess = 0;
    for (int position : {1, 2})
        expectEqual(FltMaterialFields::readFrom(*material, position), between);
    expectEqual(FltMaterialFields::readFrom(*material, 0), FltMaterialFields()); // the toolkit's own
    expectEqual(FltMaterialFields::readFrom(*material, 3), someFields());
}

TEST(FltMaterialFieldsTest, APositionThatIsNotThereReadsAsADefaultMaterial)
{
    SoNodeRef<SoMaterial> const material(new SoMaterial);
    someFields().writeTo(*material, 0);
    for (int position : {-32768, -1, 1, 32767})
        expectEqual(FltMaterialFields::readFrom(*material, position), FltMaterialFields());
}

} // namespace
