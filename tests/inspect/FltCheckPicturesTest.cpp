#include "inspect/FltCheckPictures.h"

#include "messages/FltFindingNumber.h"
#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>

namespace Number = FltFindingNumber;

namespace
{

/// What is found of a texture that the database names first in its palette.
std::vector<FltFinding> findingsOf(FltTexture const& texture)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.add("TexturePattern", {{"fileName", "tree.png"}}).push().pop().save(folder / "database.flt");
    FltInventory const inventory(folder / "database.flt");
    FltFindingList findings(inventory);
    FltCheckPictures(inventory, findings).check({texture});
    return findings.sorted();
}

FltTexture picture(int width, int height)
{
    auto pixels = std::make_shared<PicturePixels>();
    pixels->width = width;
    pixels->height = height;
    FltTexture texture;
    texture.name = "tree.png";
    texture.pixels = pixels;
    return texture;
}

} // namespace

TEST(FltCheckPictures, takesPowersOfTwoOfEachSide)
{
    for (int const side : {1, 2, 64, 4096})
        EXPECT_TRUE(findingsOf(picture(side, 8)).empty()) << side;
    for (int const side : {0, 3, 100, 4095})
        for (FltTexture const& texture : {picture(side, 8), picture(8, side)})
            EXPECT_EQ(findingsOf(texture).size(), 1U) << side;
    FltFinding const finding = findingsOf(picture(100, 64)).front();
    EXPECT_EQ(finding.kind->number, Number::unevenTexture);
    EXPECT_EQ(finding.text, "\"tree.png\" has 100 x 64 pixels");
    EXPECT_GT(finding.offset, 0);
}

TEST(FltCheckPictures, tellsNoPlaceOfATextureThatThePaletteDoesNotName)
{
    FltTexture texture = picture(3, 8);
    texture.name = "bush.png";
    EXPECT_EQ(findingsOf(texture).at(0).offset, FltFinding::nowhere);
}

TEST(FltCheckPictures, tellsWhyAPictureCantBeReadAndNothingOfOneThatIsntThere)
{
    FltTexture texture;
    texture.name = "tree.png";
    EXPECT_TRUE(findingsOf(texture).empty()); // it is missing, which FLT-401 tells
    texture.unreadable = "/data/tree.png";
    texture.problem = "is a DDS picture, which isn't read";
    std::vector<FltFinding> const findings = findingsOf(texture);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].kind->number, Number::unreadableTexture);
    EXPECT_EQ(findings[0].text, "/data/tree.png is a DDS picture, which isn't read");
}
