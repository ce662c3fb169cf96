#include "records/FltRecordLightPointPalette.h"

#include "records/FltFields.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

TEST(FltRecordLightPointAppearancePalette, hasItsIndexAfterTheNameAndThePixelSizesLast)
{
    std::string body = FltWriter::big32(0) + std::string(256, 'n') + FltWriter::big32(9);
    body += FltWriter::big16(1) + FltWriter::big16(2) + "\1\2\3\4" + FltWriter::big32(3);
    for (int i = 0; i < 4; ++i)
        body += FltWriter::bigFloat(10 + i);
    for (int i = 0; i < 4; ++i)
        body += FltWriter::big32(20 + i);
    for (int i = 0; i < 3; ++i)
        body += FltWriter::bigFloat(30 + i);
    FltRecordLightPointAppearancePalette entry;
    EXPECT_EQ(FltFields::sizeOf(entry), body.size());
    FltFields::decodeFrom(entry, body.data());
    EXPECT_EQ(entry.paletteIndex, 9);
    EXPECT_EQ(entry.surfaceMaterial, 1);
    EXPECT_EQ(entry.featureID, 2);
    EXPECT_EQ(entry.backColor[0], 1);
    EXPECT_EQ(entry.backColor[3], 4);
    EXPECT_EQ(entry.displayMode, 3);
    EXPECT_EQ(entry.frontIntensity, 10);
    EXPECT_EQ(entry.maxDefocus, 13);
    EXPECT_EQ(entry.fadeMode, 20);
    EXPECT_EQ(entry.directionalMode, 22);
    EXPECT_EQ(entry.rangeMode, 23);
    EXPECT_EQ(entry.minPixelSize, 30);
    EXPECT_EQ(entry.actualPixelSize, 32);
}

TEST(FltRecordIndexedLightPoint, namesItsAppearanceAfterItsId)
{
    std::string body = "light no" + FltWriter::big32(-3);
    FltRecordIndexedLightPoint point;
    FltFields::decodeFrom(point, body.data());
    EXPECT_EQ(std::string(point.idASCII, 8), "light no");
    EXPECT_EQ(point.appearanceIndex, -3);
}

} // namespace
