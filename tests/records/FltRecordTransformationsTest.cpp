#include "records/FltRecordTransformations.h"

#include "support/RecordText.h"

#include <gtest/gtest.h>

namespace
{

std::string const ancillary = "ANCILLARY_RECORD";

FltWriter::Fields const sixteen = {{"matrix", {1, 2, 3, 4, 5.5, 6, 7, 8, 9, 10, 11, 12, -13, 1e6, 1e-7, 16}}};

std::string const sixteenInRows = "|  1  2  3  4    |\n"
                                  "|  5.5  6  7  8    |\n"
                                  "|  9  10  11  12    |\n"
                                  "|  -13  1e+06  1e-07  16    |\n";

void expectSixteen(AbstractMatrixRecord const& record)
{
    float const expected[4][4] = {{1, 2, 3, 4}, {5.5F, 6, 7, 8}, {9, 10, 11, 12}, {-13, 1e6F, 1e-7F, 16}};
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            EXPECT_EQ(record.matrix[row][column], expected[row][column]) << row << ", " << column;
}

TEST(FltRecordMatrixTest, DecodesItsRowsAndEndsEachInTheDumpWithFourBlanksAndABar)
{
    auto const record = decodeLastAs<FltRecordMatrix>(FltWriter().add("Matrix", sixteen));
    ASSERT_NE(record, nullptr);
    expectSixteen(*record);
    EXPECT_EQ(dumpOf(*record), frame("\n MATRIX RECORD ", ancillary, 49, 68) + sixteenInRows);
}

TEST(FltRecordGeneralMatrixTest, DecodesAndDumpsAsAMatrix)
{
    auto const record = decodeLastAs<FltRecordGeneralMatrix>(FltWriter().add("GeneralMatrix", sixteen));
    ASSERT_NE(record, nullptr);
    expectSixteen(*record);
    EXPECT_EQ(dumpOf(*record), frame("\n GENERAL_MATRIX RECORD ", ancillary, 94, 68) + sixteenInRows);
}

TEST(FltRecordVectorTest, DecodesAndDumpsEveryField)
{
    FltWriter const flt = FltWriter().add("Vector", {{"i", 1.5}, {"j", 2.5}, {"k", 3.5}});
    auto const record = decodeLastAs<FltRecordVector>(flt);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->i, 1.5F);
    EXPECT_EQ(record->j, 2.5F);
    EXPECT_EQ(record->k, 3.5F);
    EXPECT_EQ(dumpOf(*record), frame("\n VECTOR RECORD ", ancillary, 50, 16) + "i=1.5  j=2.5  k=3.5\n");
}

TEST(FltRecordRotateAboutEdgeTest, DecodesAndDumpsEveryField)
{
    FltWriter const flt = FltWriter().add("RotateAboutEdge", {{"XCenter1", 1.5},
                                                              {"YCenter1", 2.5},
                                                              {"ZCenter1", 3.5},
                                                              {"XCenter2", 4.5},
                                                              {"YCenter2", 5.5},
                                                              {"ZCenter2", 6.5},
                                                              {"angleToRotate", 7.5}});
    auto const record = decodeLastAs<FltRecordRotateAboutEdge>(flt);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->XCenter1, 1.5);
    EXPECT_EQ(record->YCenter1, 2.5);
    EXPECT_EQ(record->ZCenter1, 3.5);
    EXPECT_EQ(record->XCenter2, 4.5);
    EXPECT_EQ(record->YCenter2, 5.5);
    EXPECT_EQ(record->ZCenter2, 6.5);
    EXPECT_EQ(record->angleToRotate, 7.5F);
    EXPECT_EQ(dumpOf(*record), frame("\n ROTATE ABOUT EDGE RECORD ", ancillary, 76, 60) +
                                   "XCenter1: 1.5\n"
                                   "YCenter1: 2.5\n"
                                   "ZCenter1: 3.5\n"
                                   "XCenter2: 4.5\n"
                                   "YCenter2: 5.5\n"
                                   "ZCenter2: 6.5\n"
                                   "angleToRotate: 7.5\n");
}

TEST(FltRecordTranslateTest, DecodesAndDumpsEveryField)
{
    FltWriter const flt = FltWriter().add(
        "Translate", {{"x", 1.5}, {"y", 2.5}, {"z", 3.5}, {"deltaX", 4.5}, {"deltaY", 5.5}, {"deltaZ", 6.5}});
    auto const record = decodeLastAs<FltRecordTranslate>(flt);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->x, 1.5);
    EXPECT_EQ(record->y, 2.5);
    EXPECT_EQ(record->z, 3.5);
    EXPECT_EQ(record->deltaX, 4.5);
    EXPECT_EQ(record->deltaY, 5.5);
    EXPECT_EQ(record->deltaZ, 6.5);
    EXPECT_EQ(dumpOf(*record), frame("\n TRANSLATE RECORD ", ancillary, 78, 56) +
                                   "x=1.5  y=2.5  z=3.5\n"
                                   "deltaX=4.5  deltaY=5.5  deltaZ=6.5\n");
}

TEST(FltRecordScaleNonUniformTest, DecodesAndDumpsEveryField)
{
    FltWriter const flt = FltWriter().add("ScaleNonUniform", {{"XCenter", 1.5},
                                                              {"YCenter", 2.5},
                                                              {"ZCenter", 3.5},
                                                              {"XScaleFactor", 4.5},
                                                              {"YScaleFactor", 5.5},
                                                              {"ZScaleFactor", 6.5}});
    auto const record = decodeLastAs<FltRecordScaleNonUniform>(flt);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->XCenter, 1.5);
    EXPECT_EQ(record->YCenter, 2.5);
    EXPECT_EQ(record->ZCenter, 3.5);
    EXPECT_EQ(record->XScaleFactor, 4.5F);
    EXPECT_EQ(record->YScaleFactor, 5.5F);
    EXPECT_EQ(record->ZScaleFactor, 6.5F);
    EXPECT_EQ(dumpOf(*record), frame("\n SCALE NON UNIFORM RECORD ", ancillary, 79, 44) +
                                   "XCenter.: 1.5\n"
                                   "YCenter: 2.5\n"
                                   "ZCenter: 3.5\n"
                                   "XScaleFactor: 4.5\n"
                                   "YScaleFactor: 5.5\n"
                                   "ZScaleFactor: 6.5\n");
}

TEST(FltRecordRotateAboutPointTest, DecodesAndDumpsEveryField)
{
    FltWriter const flt = FltWriter().add("RotateAboutPoint", {{"XCenterOfRotation", 1.5},
                                                               {"YCenterOfRotation", 2.5},
                                                               {"ZCenterOfRotation", 3.5},
                                                               {"IAxisOfRotation", 4.5},
                                                               {"JAxisOfRotation", 5.5},
                                                               {"KAxisOfRotation", 6.5},
                                                               {"angleToRotate", 7.5}});
    auto const record = decodeLastAs<FltRecordRotateAboutPoint>(flt);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->XCenterOfRotation, 1.5);
    EXPECT_EQ(record->YCenterOfRotation, 2.5);
    EXPECT_EQ(record->ZCenterOfRotation, 3.5);
    EXPECT_EQ(record->IAxisOfRotation, 4.5F);
    EXPECT_EQ(record->JAxisOfRotation, 5.5F);
    EXPECT_EQ(record->KAxisOfRotation, 6.5F);
    EXPECT_EQ(record->angleToRotate, 7.5F);
    EXPECT_EQ(dumpOf(*record), frame("\n ROTATE ABOUT POINT RECORD ", ancillary, 80, 48) +
                                   "XCenterOfRotation: 1.5\n"
                                   "YCenterOfRotation: 2.5\n"
                                   "ZCenterOfRotation: 3.5\n"
                                   "IAxisOfRotation: 4.5\n"
                                   "JAxisOfRotation: 5.5\n"
                                   "KAxisOfRotation: 6.5\n"
                                   "angleToRotate: 7.5\n");
}

TEST(FltRecordPutTransformTest, DecodesAndDumpsEveryField)
{
    FltWriter const flt = FltWriter().add("PutTransform", {{"XFromOrigin", 1.5},
                                                           {"YFromOrigin", 2.5},
                                                           {"ZFromOrigin", 3.5},
                                                           {"XFromAlign", 4.5},
                                                           {"YFromAlign", 5.5},
                                                           {"ZFromAlign", 6.5},
                                                           {"XFromTrack", 7.5},
                                                           {"YFromTrack", 8.5},
                                                           {"ZFromTrack", 9.5},
                                                           {"XToOrigin", 10.5},
                                                           {"YToOrigin", 11.5},
                                                           {"ZToOrigin", 12.5},
                                                           {"XToAlign", 13.5},
                                                           {"YToAlign", 14.5},
                                                           {"ZToAlign", 15.5},
                                                           {"XToTrack", 16.5},
                                                           {"YToTrack", 17.5},
                                                           {"ZToTrack", 18.5},
                                                           {"angleToRotate", 19.5}});
    std::string bytes = flt.lastRecord();
    FltRecordPutTransform record(static_cast<unsigned>(bytes.size()));
    record.getPropertiesFromData(bytes.data());
    EXPECT_EQ(record.XFromOrigin, 1.5);
    EXPECT_EQ(record.YFromOrigin, 2.5);
    EXPECT_EQ(record.ZFromOrigin, 3.5);
    EXPECT_EQ(record.XFromAlign, 4.5);
    EXPECT_EQ(record.YFromAlign, 5.5);
    EXPECT_EQ(record.ZFromAlign, 6.5);
    EXPECT_EQ(record.XFromTrack, 7.5);
    EXPECT_EQ(record.YFromTrack, 8.5);
    EXPECT_EQ(record.ZFromTrack, 9.5);
    EXPECT_EQ(record.XToOrigin, 10.5);
    EXPECT_EQ(record.YToOrigin, 11.5);
    EXPECT_EQ(record.ZToOrigin, 12.5);
    EXPECT_EQ(record.XToAlign, 13.5);
    EXPECT_EQ(record.YToAlign, 14.5);
    EXPECT_EQ(record.ZToAlign, 15.5);
    EXPECT_EQ(record.XToTrack, 16.5);
    EXPECT_EQ(record.YToTrack, 17.5);
    EXPECT_EQ(record.ZToTrack, 18.5);
    EXPECT_EQ(record.angleToRotate, 19.5F);
    EXPECT_EQ(dumpOf(record), frame("\n PUT TRANSFORM RECORD ", ancillary, 82, 156) +
                                  "XFromOrigin: 1.5\n"
                                  "YFromOrigin: 2.5\n"
                                  "ZFromOrigin: 3.5\n"
                                  "XFromAlign: 4.5\n"
                                  "YFromAlign: 5.5\n"
                                  "ZFromAlign: 6.5\n"
                                  "XFromTrack: 7.5\n"
                                  "YFromTrack: 8.5\n"
                                  "ZFromTrack: 9.5\n"
                                  "XToOrigin: 10.5\n"
                                  "YToOrigin: 11.5\n"
                                  "ZToOrigin: 12.5\n"
                                  "XToAlign: 13.5\n"
                                  "YToAlign: 14.5\n"
                                  "ZToAlign: 15.5\n"
                                  "XToTrack: 16.5\n"
                                  "YToTrack: 17.5\n"
                                  "ZToTrack: 18.5\n"
                                  "angleToRotate: 19.5\n");
}

TEST(FltRecordPutTransformTest, ARecordOfOpcode82DecodesAsRotateAboutEdgeFromItsFirst60Bytes)
{
    FltWriter const flt = FltWriter().add("PutTransform", {{"XFromOrigin", 1.5},
                                                           {"YFromOrigin", 2.5},
                                                           {"ZFromOrigin", 3.5},
                                                           {"XFromAlign", 4.5},
                                                           {"YFromAlign", 5.5},
                                                           {"ZFromAlign", 6.5},
                                                           {"XFromTrack", 7.5},
                                                           {"YFromTrack", 8.5},
                                                           {"ZFromTrack", 9.5},
                                                           {"XToOrigin", 10.5},
                                                           {"YToOrigin", 11.5},
                                                           {"ZToOrigin", 12.5},
                                                           {"XToAlign", 13.5},
                                                           {"YToAlign", 14.5},
                                                           {"ZToAlign", 15.5},
                                                           {"XToTrack", 16.5},
                                                           {"YToTrack", 17.5},
                                                           {"ZToTrack", 18.5},
                                                           {"angleToRotate", 19.5}});
    EXPECT_EQ(flt.lastRecord().size(), 156U);
    std::unique_ptr<FltRecord> const record = decodeLast(flt);
    EXPECT_EQ(dynamic_cast<FltRecordPutTransform*>(record.get()), nullptr);
    auto const* const edge = dynamic_cast<FltRecordRotateAboutEdge*>(record.get());
    ASSERT_NE(edge, nullptr);
    EXPECT_EQ(edge->getOpcode(), 76);
    EXPECT_EQ(dumpOf(*edge), frame("\n ROTATE ABOUT EDGE RECORD ", ancillary, 76, 156) +
                                 "XCenter1: 1.5\n"
                                 "YCenter1: 2.5\n"
                                 "ZCenter1: 3.5\n"
                                 "XCenter2: 4.5\n"
                                 "YCenter2: 5.5\n"
                                 "ZCenter2: 6.5\n"
                                 "angleToRotate: 2.46875\n")
        << "the first half of a double, 7.5, taken as a float";
}

TEST(FltRecordTransformationsTest, ReservedWordsAreKeptAndNotShown)
{
    auto const reservedOf = [](auto&& record) {
        std::string bytes = FltWriter::big32(0) + FltWriter::big32(-19) + std::string(148, '\0');
        record.getPropertiesFromData(bytes.data());
        EXPECT_EQ(dumpOf(record).find("-19"), std::string::npos);
        return record.reserved;
    };
    EXPECT_EQ(reservedOf(FltRecordRotateAboutEdge(60)), -19);
    EXPECT_EQ(reservedOf(FltRecordTranslate(56)), -19);
    EXPECT_EQ(reservedOf(FltRecordScaleNonUniform(44)), -19);
    EXPECT_EQ(reservedOf(FltRecordRotateAboutPoint(48)), -19);
    EXPECT_EQ(reservedOf(FltRecordPutTransform(156)), -19);
}

} // namespace
