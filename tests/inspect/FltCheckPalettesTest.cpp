#include "inspect/FltCheckPalettes.h"

#include "FamilyFindings.h"
#include "messages/FltFindingNumber.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace Number = FltFindingNumber;

namespace
{

using Found = FamilyFindings<FltCheckPalettes>;

std::vector<int> const nothing;

/// A face in an object of a database with a palette of colours, or without.
FltWriter withFace(FltWriter::Fields const& fields, bool hasPalette = false, int revision = 1570)
{
    FltWriter flt(revision);
    if (hasPalette)
        flt.add("ColorPalette");
    return flt.push().add("Object").push().add("Face", fields).pop().pop();
}

constexpr unsigned packedColor = 1U << 28, noColor = 1U << 30;

} // namespace

TEST(FltCheckPalettes, findsColoursThatNoPaletteHolds)
{
    std::vector<int> const undefined = {Number::undefinedColor};
    EXPECT_EQ(Found::numbersIn(withFace({{"primaryColorIndex", 7}})), undefined);
    EXPECT_EQ(Found::in(withFace({{"primaryColorIndex", 7}})).at(0).text, "there is no colour palette");
    EXPECT_EQ(Found::numbersIn(withFace({{"primaryColorIndex", 7}}, true)), nothing);
    EXPECT_EQ(Found::numbersIn(withFace({{"primaryColorIndex", 0}}, true)), nothing);
    EXPECT_EQ(Found::numbersIn(withFace({{"primaryColorIndex", 131071}}, true)), nothing) << "the last one";
    EXPECT_EQ(Found::numbersIn(withFace({{"primaryColorIndex", 131072}}, true)), undefined);
    EXPECT_EQ(Found::in(withFace({{"primaryColorIndex", 131072}}, true)).at(0).text, "colour 131072");
}

TEST(FltCheckPalettes, asksForNoColourOfAPaletteWhereAFaceHasNoneOrItsOwn)
{
    for (unsigned const flags : {packedColor, noColor})
        EXPECT_EQ(
            Found::numbersIn(withFace({{"primaryColorIndex", 7}, {"flags", static_cast<double>(flags)}})),
            nothing)
            << flags;
    EXPECT_EQ(Found::numbersIn(withFace({{"primaryColorIndex", -1}})), nothing);
    EXPECT_EQ(Found::numbersIn(withFace({{"primaryColorIndex", -1}}, true)), nothing);
}

TEST(FltCheckPalettes, asksForThePaletteOfColoursSinceRevision1500)
{
    EXPECT_EQ(Found::numbersIn(withFace({}, false, 1500)), std::vector<int>{Number::undefinedColor});
    EXPECT_EQ(Found::numbersIn(withFace({}, false, 1421)), nothing);
}

TEST(FltCheckPalettes, findsIndicesThatNoPaletteHolds)
{
    FltWriter::Fields const colors = {{"primaryColorIndex", -1}};
    auto const with = [&](char const* field, int index) {
        FltWriter::Fields fields = colors;
        fields.push_back({field, index});
        return Found::numbersIn(withFace(fields));
    };
    for (int const index : {0, 3}) {
        EXPECT_EQ(with("texturePatternIndex", index), std::vector<int>{Number::undefinedTexture}) << index;
        EXPECT_EQ(with("detailTexturePatternIndex", index), std::vector<int>{Number::undefinedTexture})
            << index;
        EXPECT_EQ(with("materialIndex", index), std::vector<int>{Number::undefinedMaterial}) << index;
        EXPECT_EQ(with("textureMappingIndex", index), std::vector<int>{Number::undefinedMapping}) << index;
    }
    EXPECT_EQ(with("texturePatternIndex", -1), nothing);
    EXPECT_EQ(with("materialIndex", -1), nothing);
}

TEST(FltCheckPalettes, findsLineStylesThatNoPaletteHoldsButTheUsualOne)
{
    FltWriter::Fields fields = {{"primaryColorIndex", -1}, {"lineStyleIndex", 0}};
    EXPECT_EQ(Found::numbersIn(withFace(fields)), nothing);
    for (int const style : {1, 5}) {
        fields.back().second = style;
        EXPECT_EQ(Found::in(withFace(fields)).at(0).text, "line style " + std::to_string(style));
    }
}

TEST(FltCheckPalettes, findsColoursBelowZeroThatMeanNoNone)
{
    EXPECT_EQ(Found::numbersIn(withFace({{"primaryColorIndex", -2}}, true)),
              std::vector<int>{Number::undefinedColor});
}

TEST(FltCheckPalettes, findsLightSourcesThatNoPaletteHolds)
{
    auto const with = [](int index) {
        FltWriter flt;
        flt.add("LightSourcePalette", {{"paletteIndex", 3}}).push();
        return Found::in(flt.add("LightSource", {{"indexIntoLightPalette", index}}).pop());
    };
    EXPECT_TRUE(with(3).empty());
    for (int const index : {0, 4})
        EXPECT_EQ(with(index).at(0).text, "light source " + std::to_string(index));
}

TEST(FltCheckPalettes, findsIndicesOfEachPaletteThatAreThereTwice)
{
    auto const with = [](char const* record, char const* field, int second) {
        FltWriter flt;
        flt.add(record, {{field, 1}}).add(record, {{field, second}}).push();
        return Found::in(flt.pop());
    };
    struct Case {
        char const* record;
        char const* field;
        char const* text;
    };
    for (Case const& one : {Case{"TexturePattern", "patternIndex", "texture 1"},
                            {"Material", "index", "material 1"},
                            {"LineStylePalette", "lineStyleIndex", "line style 1"},
                            {"TextureMappingPalette", "index", "texture mapping 1"},
                            {"LightSourcePalette", "paletteIndex", "light source 1"}}) {
        EXPECT_TRUE(with(one.record, one.field, 2).empty()) << one.text;
        std::vector<FltFinding> const findings = with(one.record, one.field, 1);
        ASSERT_EQ(findings.size(), 1U) << one.text;
        EXPECT_EQ(findings[0].text, one.text);
        EXPECT_EQ(findings[0].kind->number, Number::repeatedIndex);
    }
}

TEST(FltCheckPalettes, tellsOfMappingsByTheNameOfTheTextureOrItsNumber)
{
    FltWriter flt(1570);
    flt.add("TexturePattern", {{"fileName", "tree.rgb"}, {"patternIndex", 0}}).push().add("Object").push();
    for (int const texture : {0, 7, -1})
        flt.add("Face",
                {{"primaryColorIndex", -1}, {"texturePatternIndex", texture}, {"textureMappingIndex", 2}});
    std::vector<std::string> texts;
    for (FltFinding const& finding : Found::in(flt.pop().pop()))
        if (finding.kind->number == Number::undefinedMapping)
            texts.push_back(finding.text);
    EXPECT_EQ(texts,
              (std::vector<std::string>{"\"tree.rgb\": texture mapping 2", "texture 7: texture mapping 2",
                                        "faces without a texture: texture mapping 2"}));
}
