#include "model/FltPaletteSet.h"

#include "records/FltOpcode.h"
#include "support/LastRecord.h"

#include <gtest/gtest.h>

namespace
{

using Fields = FltWriter::Fields;

bool take(FltPaletteSet& palettes, char const* record, Fields const& fields, int revision = 1570)
{
    FltWriter flt(revision);
    flt.add(record, fields);
    return palettes.take(LastRecord(flt).view(), revision);
}

FltPaletteSet paletteOfOne()
{
    FltPaletteSet palettes("parent.flt");
    take(palettes, "ColorPalette", {{"color", {double(0xff0000ffU)}}});
    take(palettes, "Material", {{"index", 3}, {"alpha", 0.5}});
    take(palettes, "TexturePattern", {{"fileName", "wall.rgb"}, {"patternIndex", 4}});
    take(palettes, "LightSourcePalette", {{"paletteIndex", 5}});
    return palettes;
}

TEST(FltPaletteSet, takesAMaterialWithAllItsValues)
{
    FltPaletteSet palettes("a.flt");
    EXPECT_TRUE(take(palettes, "Material",
                     {{"index", 7},
                      {"ambient", {0.125, 0, 0}},
                      {"diffuse", {0, 0.25, 0}},
                      {"specular", {0, 0, 0.375}},
                      {"emissive", {0.5, 0, 0}},
                      {"shininess", 64},
                      {"alpha", 0.75}}));
    FltMaterialValues const& material = palettes.materials->at(7);
    EXPECT_EQ(material.ambient[0], 0.125F);
    EXPECT_EQ(material.diffuse[1], 0.25F);
    EXPECT_EQ(material.specular[2], 0.375F);
    EXPECT_EQ(material.emissive[0], 0.5F);
    EXPECT_EQ(material.shininess, 64);
    EXPECT_EQ(material.alpha, 0.75F);
}

TEST(FltPaletteSet, takesAllMaterialsOfAnOldFile)
{
    std::string entries(std::size_t(46) * 4, '\0');
    for (int i = 0; i < 14; ++i) // the second one: 1 to 14
        entries += FltWriter::bigFloat(i + 1);
    FltWriter flt(14);
    flt.addRaw(FltOpcode::oldMaterialPalette, entries);
    FltPaletteSet palettes("a.flt");
    EXPECT_TRUE(palettes.take(LastRecord(flt).view(), 14));
    EXPECT_EQ(palettes.materials->size(), 64U);
    FltMaterialValues const& material = palettes.materials->at(1);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(material.ambient[i], static_cast<float>(i + 1));
        EXPECT_EQ(material.diffuse[i], static_cast<float>(i + 4));
        EXPECT_EQ(material.specular[i], static_cast<float>(i + 7));
        EXPECT_EQ(material.emissive[i], static_cast<float>(i + 10));
    }
    EXPECT_EQ(material.shininess, 13);
    EXPECT_EQ(material.alpha, 14);
}

TEST(FltPaletteSet, takesTextureNamesOfBothForms)
{
    FltPaletteSet palettes("a.flt");
    EXPECT_TRUE(take(palettes, "TexturePattern", {{"fileName", "long.rgb"}, {"patternIndex", 1}}));
    EXPECT_TRUE(take(palettes, "ShortTexturePattern", {{"fileName", "short.rgb"}, {"patternIndex", 2}}));
    EXPECT_EQ(palettes.textures->names,
              (std::map<std::int32_t, std::string>{{1, "long.rgb"}, {2, "short.rgb"}}));
    EXPECT_EQ(palettes.textures->file, "a.flt");
}

TEST(FltPaletteSet, takesALightWithAllItsValues)
{
    FltPaletteSet palettes("a.flt");
    FltWriter flt;
    flt.add("LightSourcePalette", {{"paletteIndex", 2},
                                   {"diffuseRed", 0.25},
                                   {"diffuseGreen", 0.5},
                                   {"diffuseBlue", 0.75},
                                   {"lightType", 2}});
    // The exact conversion reads what follows the type at another place.
    constexpr std::size_t typeEnd = 4 + 36 + 12 * 4 + 4, reserved = 40;
    std::string body = flt.lastRecord().substr(4, typeEnd - 4) + std::string(reserved, '\0');
    for (int const value : {3, 45, 0, 0, 4, 5, 6})
        body += FltWriter::bigFloat(value);
    flt.addRaw(FltOpcode::lightSourcePalette, body);
    EXPECT_TRUE(palettes.take(LastRecord(flt).view(), 1570));
    FltLightValues const& light = palettes.lights->at(2);
    EXPECT_EQ(light.type, FltLightValues::spot);
    EXPECT_EQ(light.diffuse[0], 0.25F);
    EXPECT_EQ(light.diffuse[1], 0.5F);
    EXPECT_EQ(light.diffuse[2], 0.75F);
    EXPECT_EQ(light.dropoff, 3);
    EXPECT_EQ(light.cutoffAngle, 45);
    EXPECT_EQ(light.attenuation[0], 4);
    EXPECT_EQ(light.attenuation[1], 5);
    EXPECT_EQ(light.attenuation[2], 6);
}

TEST(FltPaletteSet, knowsTheWidthsOfLineStyles)
{
    FltPaletteSet palettes("a.flt");
    EXPECT_TRUE(take(palettes, "LineStylePalette", {{"lineStyleIndex", 3}, {"lineWidth", 5}}));
    EXPECT_EQ(palettes.lineWidths->at(3), 5);
    FltPaletteSet child("b.flt");
    child.overrideBy(palettes, 0x10000000);
    EXPECT_TRUE(take(child, "LineStylePalette", {{"lineStyleIndex", 3}, {"lineWidth", 7}}));
    EXPECT_EQ(child.lineWidths->at(3), 5);
}

TEST(FltPaletteSet, saysWhatBelongsToNoneOfItsPalettes)
{
    FltPaletteSet palettes("a.flt");
    EXPECT_FALSE(take(palettes, "SoundPaletteNames", {}));
    EXPECT_FALSE(take(palettes, "Group", {}));
}

TEST(FltPaletteSet, takesOverThePalettesThatFlagsName)
{
    FltPaletteSet const parent = paletteOfOne();
    struct Case {
        std::uint32_t flag;
        bool colors, materials, textures, lights;
    };
    for (Case const& each :
         {Case{0x80000000, true, false, false, false}, Case{0x40000000, false, true, false, false},
          Case{0x20000000, false, false, true, false}, Case{0x04000000, false, false, false, true}}) {
        FltPaletteSet palettes("child.flt");
        palettes.overrideBy(parent, each.flag);
        EXPECT_EQ(palettes.colors == parent.colors, each.colors) << each.flag;
        EXPECT_EQ(palettes.materials == parent.materials, each.materials) << each.flag;
        EXPECT_EQ(palettes.textures == parent.textures, each.textures) << each.flag;
        EXPECT_EQ(palettes.lights == parent.lights, each.lights) << each.flag;
        EXPECT_NE(palettes.lightPoints, parent.lightPoints);
    }
    FltPaletteSet palettes("child.flt");
    palettes.overrideBy(parent, 0x02000000);
    EXPECT_EQ(palettes.lightPoints, parent.lightPoints);
    EXPECT_NE(palettes.lights, parent.lights);
    FltPaletteSet own("child.flt");
    own.overrideBy(parent, ~FltPaletteSet::knownOverrides);
    EXPECT_NE(own.colors, parent.colors);
    EXPECT_NE(own.materials, parent.materials);
    EXPECT_NE(own.textures, parent.textures);
    EXPECT_NE(own.lights, parent.lights);
    EXPECT_NE(own.lightPoints, parent.lightPoints);
    EXPECT_NE(own.lineWidths, parent.lineWidths);
}

TEST(FltPaletteSet, passesOverRecordsOfPalettesThatWereTakenOver)
{
    FltPaletteSet const parent = paletteOfOne();
    FltPaletteSet palettes("child.flt");
    palettes.overrideBy(parent, FltPaletteSet::knownOverrides);
    EXPECT_TRUE(take(palettes, "ColorPalette", {{"color", {0.0}}}));
    EXPECT_TRUE(take(palettes, "Material", {{"index", 8}}));
    EXPECT_TRUE(take(palettes, "TexturePattern", {{"patternIndex", 8}}));
    EXPECT_TRUE(take(palettes, "LightSourcePalette", {{"paletteIndex", 8}}));
    EXPECT_EQ(palettes.colors->atIndex(127), 0xff0000ffU);
    EXPECT_EQ(palettes.materials->size(), 1U);
    EXPECT_EQ(palettes.textures->names.size(), 1U);
    EXPECT_EQ(palettes.lights->size(), 1U);
}

} // namespace
