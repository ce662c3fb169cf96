#pragma once

#include <Inventor/SbColor.h>

class SoMaterial;

/// The six values of one material, which stand at one position of the six fields of an SoMaterial.
struct FltMaterialFields {
    SbColor ambientColor{0.2F, 0.2F, 0.2F};
    SbColor diffuseColor{0.8F, 0.8F, 0.8F};
    SbColor specularColor{0.0F, 0.0F, 0.0F};
    SbColor emissiveColor{0.0F, 0.0F, 0.0F};
    float shininess = 0.2F;
    float transparency = 0.0F;

    /// Writes the values at position @p index, from 0 on. Positions in between that were never written get
    /// the toolkit's default colours, and 0 for shininess and transparency.
    void writeTo(SoMaterial& material, int index) const;

    /// The values at position @p index; those of a default material where there is none.
    static FltMaterialFields readFrom(SoMaterial const& material, int index);
};
