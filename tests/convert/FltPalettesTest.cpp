#include "convert/FltPalettes.h"

#include <gtest/gtest.h>

namespace
{

TEST(FltPalettesTest, ATextureIsFoundByItsIndex)
{
    FltPalettes palettes;
    SoNodeRef<SoTexture2> const texture(new SoTexture2);
    palettes.texturePalette[-3] = texture;
    EXPECT_EQ(palettes.findTexture(-3), texture.get());
}

TEST(FltPalettesTest, AnIndexWithoutATextureGivesNullAndAddsNothing)
{
    FltPalettes const palettes;
    EXPECT_EQ(palettes.findTexture(0), nullptr);
    EXPECT_TRUE(palettes.texturePalette.empty());
}

TEST(FltPalettesTest, TheTablesHoldTheirNodesAndLetGoOfThoseThatAreReplaced)
{
    SoNodeRef<SoTexture2> const texture(new SoTexture2);
    SoNodeRef<SoMaterial> material;
    {
        FltPalettes palettes;
        palettes.texturePalette[1] = texture;
        material = palettes.materialPalette;
        EXPECT_EQ(texture->getRefCount(), 2);
        EXPECT_EQ(material->getRefCount(), 2);
        palettes.texturePalette[1] = SoNodeRef<SoTexture2>(new SoTexture2);
        EXPECT_EQ(texture->getRefCount(), 1);
    }
    EXPECT_EQ(material->getRefCount(), 1);
}

TEST(FltPalettesTest, WithoutNodesThereAreNoMaterials)
{
    EXPECT_EQ(FltPalettes(false).materialPalette.get(), nullptr);
}

} // namespace
