#include "inspect/FltCheckVertices.h"

#include "messages/FltFindingNumber.h"
#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <limits>

namespace Number = FltFindingNumber;

namespace
{

std::vector<FltFinding> findingsIn(FltWriter const& flt)
{
    ScratchFolder const folder;
    flt.save(folder / "database.flt");
    FltInventory const inventory(folder / "database.flt");
    FltFindingList findings(inventory);
    FltCheckedModel const checked(inventory);
    FltCheckVertices(checked, findings).check();
    return findings.sorted();
}

/// A palette of three vertices.
struct Palette {
    explicit Palette(double x = 0)
    {
        flt.vertexPalette();
        for (int i = 0; i < 3; ++i)
            offsets.push_back(flt.vertex("VertexColor", x, i, 0));
        flt.endVertexPalette().push();
    }

    FltWriter flt;
    std::vector<double> offsets;
};

} // namespace

TEST(FltCheckVertices, countsWhatNoListNames)
{
    Palette palette;
    palette.flt.face({palette.offsets[1]});
    std::vector<FltFinding> const findings = findingsIn(palette.flt.pop());
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].kind->number, Number::unusedVertices);
    EXPECT_EQ(findings[0].text, "2 of 3");
}

TEST(FltCheckVertices, takesBothEndsOfAMorphAndLightPointsAsUses)
{
    Palette palette;
    palette.flt.add("Face").push();
    palette.flt.addRaw(89, FltWriter::big32(static_cast<long>(palette.offsets[0])) +
                               FltWriter::big32(static_cast<long>(palette.offsets[1])));
    palette.flt.pop().add("LightPoint").push().add("VertexList", {{"offsets", {palette.offsets[2]}}}).pop();
    EXPECT_TRUE(findingsIn(palette.flt.pop()).empty());
}

TEST(FltCheckVertices, takesAListThatStandsAloneForAUse)
{
    Palette palette;
    palette.flt.add("VertexList", {{"offsets", palette.offsets}});
    EXPECT_TRUE(findingsIn(palette.flt.pop()).empty());
}

/// An offset that hits nothing may have meant one of them, and an extension may use the others.
TEST(FltCheckVertices, saysNothingOfUsesThatItCantKnow)
{
    Palette lost;
    lost.flt.face({lost.offsets[1], 9});
    EXPECT_TRUE(findingsIn(lost.flt.pop()).empty());
    Palette extended;
    extended.flt.add("Group").add("PushExtension").add("PopExtension").face({extended.offsets[1]});
    EXPECT_TRUE(findingsIn(extended.flt.pop()).empty());
}

TEST(FltCheckVertices, findsUnusablePlacesOfLightPoints)
{
    Palette palette(std::numeric_limits<double>::infinity());
    palette.flt.add("LightPoint").push().add("VertexList", {{"offsets", palette.offsets}}).pop();
    std::vector<FltFinding> const findings = findingsIn(palette.flt.pop());
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].kind->number, Number::unusablePlace);
    EXPECT_EQ(findings[0].count, 3U);
}

TEST(FltCheckVertices, comparesTheLengthOfThePaletteWithItsBytes)
{
    FltWriter flt;
    flt.vertexPalette(100);
    double const corner = flt.vertex("VertexColor", 0, 0, 0);
    flt.push().face({corner});
    std::vector<FltFinding> const findings = findingsIn(flt.pop());
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].kind->number, Number::wrongPaletteLength);
    EXPECT_EQ(findings[0].text, "100 bytes instead of 48");
}

TEST(FltCheckVertices, countsTheVerticesOfEachFormInTheLengthOfThePalette)
{
    for (char const* const form :
         {"VertexColor", "VertexColorNormal", "VertexColorNormalUv", "VertexColorUv"}) {
        FltWriter flt;
        flt.vertexPalette();
        std::vector<double> const corners = {static_cast<double>(flt.vertex(form, 0, 0, 0)),
                                             static_cast<double>(flt.vertex(form, 1, 0, 0))};
        flt.endVertexPalette().push().face(corners).pop();
        EXPECT_TRUE(findingsIn(flt).empty()) << form;
    }
}

TEST(FltCheckVertices, comparesNoLengthOfSeveralPalettesOrOfADamagedFile)
{
    auto const with = [](int palettes, bool isDamaged) {
        FltWriter flt;
        for (int i = 0; i < palettes; ++i)
            flt.vertexPalette(100);
        flt.push().pop();
        if (isDamaged)
            flt.addBytes("ab");
        return findingsIn(flt).size();
    };
    EXPECT_EQ(with(1, false), 1U);
    EXPECT_EQ(with(2, false), 0U);
    EXPECT_EQ(with(1, true), 0U);
}
