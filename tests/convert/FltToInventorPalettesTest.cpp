#include "convert/FltToInventor.h"

#include "messages/FltLimits.h"
#include "records/FltRecordColorPalette.h"
#include "records/FltRecordLineStyle.h"
#include "support/ConvertedScene.h"

#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTexture2.h>
#include <gtest/gtest.h>

namespace
{

/// A database of one triangle that shows what a palette holds.
class Triangle
{
public:
    explicit Triangle(int revision = 1570) : flt(revision) {}

    /// Adds the vertices and a face with these fields.
    FltWriter& show(FltWriter::Fields const& face)
    {
        flt.vertexPalette();
        double const a = flt.vertex("VertexColor", 0, 0, 0);
        double const b = flt.vertex("VertexColor", 1, 0, 0);
        double const c = flt.vertex("VertexColor", 0, 1, 0);
        return flt.push().add("Object", {{"idASCII", "o"}}).push().face({a, b, c}, face).pop().pop();
    }

    FltWriter flt;
};

/// The material that stands for a scene's faces.
SoMaterial* faceMaterial(ConvertedScene const& scene)
{
    return static_cast<SoMaterial*>(scene.find("faceVertexColorSoMaterialSet"));
}

void expectColor(SbColor const& color, float red, float green, float blue)
{
    EXPECT_FLOAT_EQ(color[0], red);
    EXPECT_FLOAT_EQ(color[1], green);
    EXPECT_FLOAT_EQ(color[2], blue);
}

std::string word(unsigned abgr)
{
    return FltWriter::big32(abgr);
}

FltWriter::Fields const material = {{"ambient", {0.125, 0.25, 0.375}},
                                    {"diffuse", {0.5, 0.625, 0.75}},
                                    {"specular", {1, 0, 0.5}},
                                    {"emissive", {0, 0.0625, 1}},
                                    {"shininess", 64},
                                    {"alpha", 0.25}};

FltWriter::Fields withIndex(int index, FltWriter::Fields fields = material)
{
    fields.insert(fields.begin(), {"index", index});
    return fields;
}

TEST(FltToInventorPalettesTest, ColorWordsAreReversedIntoTheToolkitsOrder)
{
    Triangle database;
    database.flt.add("ColorPalette", {{"color", {0, 0xff804020}}}); // alpha, blue, green, red
    ConvertedScene const scene(database.show({{"primaryColorIndex", 128 + 127}}));
    expectColor(faceMaterial(scene)->diffuseColor[0], 0x20 / 255.0F, 0x40 / 255.0F, 0x80 / 255.0F);
}

TEST(FltToInventorPalettesTest, ASecondColorPaletteOverwritesTheFirst)
{
    Triangle database;
    database.flt.add("ColorPalette", {{"color", {0xff0000ff}}})
        .add("ColorPalette", {{"color", {0xff00ff00}}});
    ConvertedScene const scene(database.show({{"primaryColorIndex", 127}}));
    expectColor(faceMaterial(scene)->diffuseColor[0], 0, 1, 0);
}

TEST(FltToInventorPalettesTest, AColorIndexOf1024OrMoreReadsAWordThatIsBlackUnlessTheFileSetsIt)
{
    Triangle database;
    database.flt.add("ColorPalette", {{"color", std::vector<double>(1024, 0xffffffff)}});
    ConvertedScene const scene(database.show({{"primaryColorIndex", 1024 * 128 + 127}}));
    expectColor(faceMaterial(scene)->diffuseColor[0], 0, 0, 0);
}

TEST(FltToInventorPalettesTest, TheFixedColorsOfRevision13StandFrom4096On)
{
    Triangle database(13);
    std::string fixed(168, '\0');
    fixed.replace(3, 3, "\xff\x80\x40");
    database.flt.add("ColorPalette", {{"fixedColors", fixed}})
        .add("Material", withIndex(0, {{"diffuse", {1, 1, 1}}}));
    ConvertedScene const scene(database.show({{"materialIndex", 0}, {"colorNameIndex", 4097}}));
    expectColor(faceMaterial(scene)->diffuseColor[0], 1, 0x80 / 255.0F, 0x40 / 255.0F);
}

TEST(FltToInventorPalettesTest, AMaterialFillsAllSixFields)
{
    Triangle database;
    database.flt.add("Material", withIndex(3));
    ConvertedScene const scene(database.show({{"materialIndex", 3}, {"flags", 0x40000000}}));
    SoMaterial const& shown = *faceMaterial(scene);
    expectColor(shown.ambientColor[0], 0.125, 0.25, 0.375);
    expectColor(shown.diffuseColor[0], 0.5, 0.625, 0.75);
    expectColor(shown.specularColor[0], 1, 0, 0.5);
    expectColor(shown.emissiveColor[0], 0, 0.0625, 1);
    EXPECT_FLOAT_EQ(shown.shininess[0], 0.5F);
    EXPECT_FLOAT_EQ(shown.transparency[0], 0.75F);
}

TEST(FltToInventorPalettesTest, OfTwoMaterialsWithTheSameIndexTheLaterWins)
{
    Triangle database;
    database.flt.add("Material", withIndex(0, {{"diffuse", {1, 0, 0}}}));
    database.flt.add("Material", withIndex(0, {{"diffuse", {0, 0, 1}}}));
    ConvertedScene const scene(database.show({{"materialIndex", 0}, {"flags", 0x40000000}}));
    expectColor(faceMaterial(scene)->diffuseColor[0], 0, 0, 1);
}

TEST(FltToInventorPalettesTest, APositionThatWasSteppedOverHasTheDefaultColors)
{
    Triangle database;
    database.flt.add("Material", withIndex(5));
    ConvertedScene const scene(database.show({{"materialIndex", 4}, {"flags", 0x40000000}}));
    SoMaterial const& shown = *faceMaterial(scene);
    expectColor(shown.ambientColor[0], 0.2F, 0.2F, 0.2F);
    expectColor(shown.diffuseColor[0], 0.8F, 0.8F, 0.8F);
    EXPECT_FLOAT_EQ(shown.shininess[0], 0);
    EXPECT_FLOAT_EQ(shown.transparency[0], 0);
}

TEST(FltToInventorPalettesTest, MaterialsThatNoFaceCanNameAreLeftOut)
{
    Triangle database;
    for (long const index : {-1L, -2147483648L, long(FltLimits::materialPaletteSize), 2147483647L})
        database.flt.add("Material", {{"index", index}});
    database.flt.add("Material", withIndex(FltLimits::materialPaletteSize - 1));
    ConvertedScene const scene(
        database.show({{"materialIndex", FltLimits::materialPaletteSize - 1}, {"flags", 0x40000000}}));
    expectColor(faceMaterial(scene)->diffuseColor[0], 0.5, 0.625, 0.75);
}

TEST(FltToInventorPalettesTest, AnOldMaterialPaletteFillsPositions0To63AlsoWhereTheUsedBitIsClear)
{
    std::string entries;
    for (int i = 0; i < 64; ++i) {
        for (int value = 0; value < 12; ++value)
            entries += FltWriter::bigFloat(value == 3 ? i / 64.0 : 0);
        entries += FltWriter::bigFloat(128) + FltWriter::bigFloat(1) + word(0) + std::string(124, '\0');
    }
    for (int const index : {0, 17, 63}) {
        Triangle database(1420);
        database.flt.add("OLDMaterialPalette", {{"entries", entries}});
        ConvertedScene const scene(database.show({{"materialIndex", index}, {"flags", 0x40000000}}));
        expectColor(faceMaterial(scene)->diffuseColor[0], static_cast<float>(index) / 64, 0, 0);
        EXPECT_FLOAT_EQ(faceMaterial(scene)->shininess[0], 1);
        EXPECT_FLOAT_EQ(faceMaterial(scene)->transparency[0], 0);
    }
}

TEST(FltToInventorPalettesTest, ATextureStandsUnderItsIndexWithTheNameAsInTheFile)
{
    Triangle database;
    database.flt.add("TexturePattern", {{"fileName", "no\\such.rgb"}, {"patternIndex", 7}});
    ConvertedScene const scene(database.show({{"texturePatternIndex", 7}}));
    auto* const separator = static_cast<SoSeparator*>(scene.find("isolateTexturesNodes"));
    ASSERT_NE(separator, nullptr);
    ASSERT_EQ(separator->getNumChildren(), 2);
    EXPECT_EQ(separator->getChild(0)->getTypeId(), SoTexture2::getClassTypeId());
    EXPECT_STREQ(static_cast<SoTexture2*>(separator->getChild(0))->filename.getValue().getString(),
                 "no\\such.rgb");
}

TEST(FltToInventorPalettesTest, ATextureOfAnIndexThatWasDefinedBeforeReplacesIt)
{
    Triangle database;
    database.flt.add("TexturePattern", {{"fileName", "first"}, {"patternIndex", 1}});
    database.flt.add("TexturePattern", {{"fileName", "second"}, {"patternIndex", 1}});
    ConvertedScene const scene(database.show({{"texturePatternIndex", 1}}));
    auto* const separator = static_cast<SoSeparator*>(scene.find("isolateTexturesNodes"));
    EXPECT_STREQ(static_cast<SoTexture2*>(separator->getChild(0))->filename.getValue().getString(), "second");
}

TEST(FltToInventorPalettesTest, ATextureIndexThatWasNeverDefinedGivesTheSeparatorWithoutATexture)
{
    Triangle database;
    ConvertedScene const scene(database.show({{"texturePatternIndex", 9}}));
    auto* const separator = static_cast<SoSeparator*>(scene.find("isolateTexturesNodes"));
    ASSERT_NE(separator, nullptr);
    ASSERT_EQ(separator->getNumChildren(), 1);
    EXPECT_EQ(separator->getChild(0)->getName(), SbName("SoIFSVertexColor"));
}

TEST(FltToInventorPalettesTest, LineStylesAndNamesEnterNoSceneAndAreReleased)
{
    FltWriter flt;
    flt.add("LineStylePalette", {{"lineStyleIndex", 1}, {"patternMask", -1}, {"lineWidth", 3}});
    flt.add("LineStylePalette", {{"lineStyleIndex", 1}});
    flt.add("NamePalette", {{"numberOfNames", 1}, {"entries", word(8) + FltWriter::big16(2) + "ab"}});
    flt.add("LightSourcePalette").add("PutTextureMapping", {{"type", 1}});
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.text(), rootWith(""));
    EXPECT_EQ(scene.messages, "");
}

TEST(FltToInventorPalettesTest, AFaceBeforeItsPaletteFindsTheTableAsItStands)
{
    Triangle database;
    database.show({{"materialIndex", 0}, {"flags", 0x40000000}});
    database.flt.add("Material", withIndex(0));
    ConvertedScene const scene(database.flt);
    expectColor(faceMaterial(scene)->diffuseColor[0], 0.8F, 0.8F, 0.8F);
}

} // namespace
