#include "records/FltRecordTextureMapping.h"

#include "support/RecordText.h"
#include "support/ShortRecords.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{

using Palette = FltRecordTextureMappingPalette;

std::string const title = "\n TEXTURE MAPPING PALETTE RECORD \n  (PALETTE_RECORD)\n";

FltWriter::Fields with(FltWriter::Fields fields, int type, int warpedFlag)
{
    std::vector<double> matrix;
    for (int i = 0; i < 16; ++i)
        matrix.push_back(1000 + i);
    fields.insert(fields.end(), {{"index", 12},
                                 {"name", "brick wall"},
                                 {"type", type},
                                 {"warpedFlag", warpedFlag},
                                 {"transformationMatrix", matrix}});
    return fields;
}

std::vector<double> counted(double first, int count)
{
    std::vector<double> values;
    for (int i = 0; i < count; ++i)
        values.push_back(first + i);
    return values;
}

FltWriter put(int warpedFlag = 0)
{
    FltWriter flt;
    flt.add("PutTextureMapping", with({{"toolState", 1},
                                       {"activeGeometryPoint", -2},
                                       {"lowerLeftCorner", {0.5, 1.5, 2.5}},
                                       {"upperRightCorner", {3.5, 4.5, 5.5}},
                                       {"sizeFlags", {7, -8, 9}},
                                       {"textureOrigin", {10.5, 11.5, 12.5}},
                                       {"textureAlignment", {13.5, 14.5, 15.5}},
                                       {"textureShear", {16.5, 17.5, 18.5}},
                                       {"geometryOrigin", {19.5, 20.5, 21.5}},
                                       {"geometryAlignment", {22.5, 23.5, 24.5}},
                                       {"geometryShear", {25.5, 26.5, 27.5}},
                                       {"activeTexturePoint", 28},
                                       {"displayType", 29}},
                                      1, warpedFlag));
    return flt;
}

std::string const headLines = " index: 12\n name: brick wall\n";

std::string const putLines = "Put Texture Mapping : \n"
                             "  toolState: 1\n"
                             "  activeGeometryPoint: -2\n"
                             "  lowerLeftCorner : (0.5,1.5,2.5)\n"
                             "  upperRightCorner : (3.5,4.5,5.5)\n"
                             "  sizeFlags : (7,-8,9)\n"
                             "  textureOrigin : (10.5,11.5,12.5)\n"
                             "  textureAlignment : (13.5,14.5,15.5)\n"
                             "  textureShear : (16.5,17.5,18.5)\n"
                             "  geometryOrigin : (19.5,20.5,21.5)\n"
                             "  geometryAlignment : (22.5,23.5,24.5)\n"
                             "  geometryShear : (25.5,26.5,27.5)\n"
                             "  activeTexturePoint : 28\n"
                             "  displayType : 29\n";

FltWriter pointPut()
{
    FltWriter flt;
    flt.add("PointPutTextureMapping", with({{"toolState", 1},
                                            {"activeGeometryPoint", -2},
                                            {"lowerLeftCorner", {0.5, 1.5, 2.5}},
                                            {"upperRightCorner", {3.5, 4.5, 5.5}},
                                            {"sizeFlags", {6, 7, -8, 9}},
                                            {"textureOrigin", {10.5, 11.5, 12.5}},
                                            {"textureAlignment", {13.5, 14.5, 15.5}},
                                            {"textureShear", {16.5, 17.5, 18.5}},
                                            {"texturePerspective", {19.5, 20.5, 21.5}},
                                            {"geometryOrigin", {22.5, 23.5, 24.5}},
                                            {"geometryAlignment", {25.5, 26.5, 27.5}},
                                            {"geometryShear", {28.5, 29.5, 30.5}},
                                            {"geometryPerspective", {31.5, 32.5, 33.5}},
                                            {"activeTexturePoint", 34},
                                            {"depthScale", 0.1},
                                            {"matrix", counted(101, 16)},
                                            {"lastWords", {35, 36}}},
                                           2, 0));
    return flt;
}

std::string const matrixLines = "|  101  102  103  104    |\n"
                                "|  105  106  107  108    |\n"
                                "|  109  110  111  112    |\n"
                                "|  113  114  115  116    |\n";

std::string const pointPutLines = "Point Put Texture Mapping : \n"
                                  "  toolState: 1\n"
                                  "  activeGeometryPoint: -2\n"
                                  "  lowerLeftCorner : (0.5,1.5,2.5)\n"
                                  "  upperRightCorner : (3.5,4.5,5.5)\n"
                                  "  sizeFlags : (6,7,-8,9)\n"
                                  "  textureOrigin : (10.5,11.5,12.5)\n"
                                  "  textureAlignment : (13.5,14.5,15.5)\n"
                                  "  textureShear : (16.5,17.5,18.5)\n"
                                  "  texturePerspective : (19.5,20.5,21.5)\n"
                                  "  geometryOrigin : (22.5,23.5,24.5)\n"
                                  "  geometryAlignment : (25.5,26.5,27.5)\n"
                                  "  geometryShear : (28.5,29.5,30.5)\n"
                                  "  geometryPerspective : (31.5,32.5,33.5)\n"
                                  "  activeTexturePoint : 34\n"
                                  "  depthScale : 0.1\n" +
                                  matrixLines;

FltWriter spherical()
{
    FltWriter flt;
    flt.add("SphericalTextureMapping",
            with({{"scale", 1.25}, {"center", {2.5, -3.5, 4.5}}, {"scaleRatio", 5.5}, {"maxDimension", 6.5}},
                 4, 0));
    return flt;
}

std::string const sphericalLines = "Spherical Texture Mapping : \n"
                                   "  scale : 1.25\n"
                                   "  center : (2.5,-3.5,4.5)\n"
                                   "  scaleRatio : 5.5\n"
                                   "  maxDimension : 6.5\n";

FltWriter radial()
{
    FltWriter flt;
    flt.add("RadialTextureMapping", with({{"activeGeometryPoint", 3},
                                          {"radialScale", 1.25},
                                          {"lengthScale", 2.5},
                                          {"matrix", counted(101, 16)},
                                          {"endPoint1", {4.5, 5.5, 6.5}},
                                          {"endPoint2", {7.5, 8.5, -9.5}}},
                                         5, 0));
    return flt;
}

std::string const radialLines = "Radial Texture Mapping : \n"
                                "activeGeometryPoint : 3\n"
                                "radialScale : 1.25\n"
                                "lengthScale : 2.5\n" +
                                matrixLines +
                                "  endPoint1 : (4.5,5.5,6.5)\n"
                                "  endPoint2 : (7.5,8.5,-9.5)\n";

FltWriter warped(int type = 0)
{
    FltWriter flt;
    flt.add("WarpedTextureMapping", with({{"activeGeometryPoint", 3},
                                          {"toolState", 4},
                                          {"matrix", counted(101, 16)},
                                          {"fromPoint", counted(200, 16)},
                                          {"toPoint", counted(300, 16)}},
                                         type, 1));
    return flt;
}

// Only the first pair lies in the cells that its line shows; the second stands in the y column of the first
// line and its own y in that of the second.
std::string const warpedLines = "Warped Texture Mapping : \n"
                                "activeGeometryPoint : 3\n"
                                "toolState : 4\n" +
                                matrixLines +
                                "  fromPoint : (200,202)\n"
                                "  fromPoint : (201,203)\n"
                                "  fromPoint : (0,0)\n"
                                "  fromPoint : (0,0)\n"
                                "  fromPoint : (0,0)\n"
                                "  fromPoint : (0,0)\n"
                                "  fromPoint : (0,0)\n"
                                "  fromPoint : (0,0)\n"
                                "  toPoint : (300,302)\n"
                                "  toPoint : (301,303)\n"
                                "  toPoint : (0,0)\n"
                                "  toPoint : (0,0)\n"
                                "  toPoint : (0,0)\n"
                                "  toPoint : (0,0)\n"
                                "  toPoint : (0,0)\n"
                                "  toPoint : (0,0)\n";

std::string dump(FltWriter const& flt)
{
    return dumpOf(*decodeLast(flt));
}

/// How many blocks a record holds.
int blockCount(Palette const& record)
{
    return (record.putTM != nullptr) + (record.pointPutTM != nullptr) + (record.sphericalTM != nullptr) +
           (record.radialTM != nullptr) + (record.warpedTM != nullptr);
}

/// Decodes the last record of a writer into an object that may have decoded another before.
void decodeInto(Palette& record, FltWriter const& flt)
{
    std::string bytes = flt.lastRecord();
    bytes.resize(580, '\0');
    record.getPropertiesFromData(&bytes[0]);
}

TEST(FltRecordTextureMappingTest, BeginsWithoutABlock)
{
    Palette const record(168);
    EXPECT_EQ(blockCount(record), 0);
    EXPECT_EQ(record.getOpcode(), 112);
    EXPECT_EQ(record.getRecordCategory(), "PALETTE_RECORD");
}

TEST(FltRecordTextureMappingTest, TypesWithoutALayoutHaveNoBlockAndDumpTheirHeadAlone)
{
    for (int type : {0, 3, 6, -1}) {
        FltWriter flt;
        flt.add("TextureMappingPalette", with({{"block", std::string(400, 'b')}}, type, 0));
        auto const record = decodeLastAs<Palette>(flt);
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(blockCount(*record), 0);
        EXPECT_EQ(dumpOf(*record), title + "-- Opcode: 112  Length: 568 --\n" + headLines +
                                       " type: " + std::to_string(type) + "\n warpedFlag: 0\n");
    }
}

TEST(FltRecordTextureMappingTest, HeadIsDecodedAndItsMatrixKeptButNeverPrinted)
{
    auto const record = decodeLastAs<Palette>(spherical());
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->index, 12);
    EXPECT_STREQ(record->name, "brick wall");
    EXPECT_EQ(record->type, 4);
    EXPECT_EQ(record->warpedFlag, 0);
    for (int i = 0; i < 16; ++i)
        EXPECT_EQ(record->transformationMatrix[i], 1000 + i);
    EXPECT_EQ(dumpOf(*record).find("1000"), std::string::npos);
}

TEST(FltRecordTextureMappingTest, FullNamePrintsOnIntoTheType)
{
    FltWriter flt;
    flt.add("TextureMappingPalette", {{"name", std::string(20, 'n')}, {"type", 0x4142}});
    EXPECT_NE(dump(flt).find("\n name: " + std::string(20, 'n') + "BA\n type: 16706\n"), std::string::npos);
}

TEST(FltRecordTextureMappingTest, NameWithoutAnyZeroBehindItEndsInsideTheRecord)
{
    std::string const name(20 + 8 + 128, 'A');
    FltWriter flt;
    flt.addRaw(112, std::string(8, '\0') + name + std::string(412, 'A'));
    EXPECT_NE(dump(flt).find("\n name: " + name + "\n type: 1094795585\n"), std::string::npos)
        << "the pointers of blocks that aren't there end it";
}

TEST(FltRecordTextureMappingTest, PutBlockDecodesEveryField)
{
    EXPECT_EQ(put().lastRecord().size(), 168U + 220U);
    auto const record = decodeLastAs<Palette>(put());
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(blockCount(*record), 1);
    ASSERT_NE(record->putTM, nullptr);
    FltPutTextureMappingStruct const& block = *record->putTM;
    EXPECT_EQ(sizeof block, 224U);
    EXPECT_EQ(block.toolState, 1);
    EXPECT_EQ(block.activeGeometryPoint, -2);
    EXPECT_EQ(block.lowerLeftCorner[2], 2.5);
    EXPECT_EQ(block.upperRightCorner[2], 5.5);
    EXPECT_EQ(block.sizeFlags[0], 7);
    EXPECT_EQ(block.sizeFlags[2], 9);
    EXPECT_EQ(block.textureOrigin[0], 10.5);
    EXPECT_EQ(block.textureAlignment[0], 13.5);
    EXPECT_EQ(block.textureShear[0], 16.5);
    EXPECT_EQ(block.geometryOrigin[0], 19.5);
    EXPECT_EQ(block.geometryAlignment[0], 22.5);
    EXPECT_EQ(block.geometryShear[2], 27.5);
    EXPECT_EQ(block.activeTexturePoint, 28);
    EXPECT_EQ(block.displayType, 29);
}

TEST(FltRecordTextureMappingTest, PutBlockDumpsEveryField)
{
    EXPECT_EQ(dump(put()), title + "-- Opcode: 112  Length: 388 --\n" + headLines +
                               " type: 1\n warpedFlag: 0\n" + putLines);
}

TEST(FltRecordTextureMappingTest, PointPutBlockDecodesEveryField)
{
    EXPECT_EQ(pointPut().lastRecord().size(), 168U + 412U);
    auto const record = decodeLastAs<Palette>(pointPut());
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(blockCount(*record), 1);
    ASSERT_NE(record->pointPutTM, nullptr);
    FltPointPutTextureMappingStruct const& block = *record->pointPutTM;
    EXPECT_EQ(sizeof block, 416U);
    EXPECT_EQ(block.toolState, 1);
    EXPECT_EQ(block.activeGeometryPoint, -2);
    EXPECT_EQ(block.lowerLeftCorner[0], 0.5);
    EXPECT_EQ(block.upperRightCorner[0], 3.5);
    EXPECT_EQ(block.sizeFlags[0], 6);
    EXPECT_EQ(block.sizeFlags[3], 9);
    EXPECT_EQ(block.textureOrigin[0], 10.5);
    EXPECT_EQ(block.textureAlignment[0], 13.5);
    EXPECT_EQ(block.textureShear[0], 16.5);
    EXPECT_EQ(block.texturePerspective[0], 19.5);
    EXPECT_EQ(block.geometryOrigin[0], 22.5);
    EXPECT_EQ(block.geometryAlignment[0], 25.5);
    EXPECT_EQ(block.geometryShear[0], 28.5);
    EXPECT_EQ(block.geometryPerspective[2], 33.5);
    EXPECT_EQ(block.activeTexturePoint, 34);
    EXPECT_EQ(block.depthScale, 0.1F);
    EXPECT_EQ(block.matrix[0], 101);
    EXPECT_EQ(block.matrix[15], 116);
    EXPECT_EQ(block.reserved2, 35);
    EXPECT_EQ(block.reserved3, 36);
}

TEST(FltRecordTextureMappingTest, PointPutBlockDumpsEveryField)
{
    EXPECT_EQ(dump(pointPut()), title + "-- Opcode: 112  Length: 580 --\n" + headLines +
                                    " type: 2\n warpedFlag: 0\n" + pointPutLines);
}

TEST(FltRecordTextureMappingTest, PointPutOfLength576HasBothLastWordsZero)
{
    // The words that aren't read stand in the file all the same.
    auto const record = decodeLastAs<Palette>(cutTo(pointPut(), 576, FltWriter::big32(36)));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->pointPutTM->reserved2, 0);
    EXPECT_EQ(record->pointPutTM->reserved3, 0);
    EXPECT_EQ(record->pointPutTM->matrix[15], 116);
}

TEST(FltRecordTextureMappingTest, PointPutOfLength577ReadsBothLastWords)
{
    auto const inFile = decodeLastAs<Palette>(cutTo(pointPut(), 577, std::string("\0\0\44", 3)));
    ASSERT_NE(inFile, nullptr);
    EXPECT_EQ(inFile->pointPutTM->reserved2, 35);
    EXPECT_EQ(inFile->pointPutTM->reserved3, 36);
    auto const atEnd = decodeLastAs<Palette>(cutTo(pointPut(), 577, ""));
    ASSERT_NE(atEnd, nullptr);
    EXPECT_EQ(atEnd->pointPutTM->reserved2, 35);
    EXPECT_EQ(atEnd->pointPutTM->reserved3, 0);
}

TEST(FltRecordTextureMappingTest, ValueBehindTheSizeFlagsStandsAt68InThePutBlockAndAt72InThePointPutBlock)
{
    for (int type : {1, 2}) {
        std::size_t const offset = type == 1 ? 68 : 72;
        std::string const block = std::string(offset, '\0') + FltWriter::bigDouble(1.5);
        auto const record = decodeLastAs<Palette>(
            FltWriter().add("TextureMappingPalette", {{"type", type}, {"block", block}}));
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(type == 1 ? record->putTM->textureOrigin[0] : record->pointPutTM->textureOrigin[0], 1.5);
    }
}

TEST(FltRecordTextureMappingTest, SphericalBlockDecodesAndDumpsEveryField)
{
    EXPECT_EQ(spherical().lastRecord().size(), 168U + 36U);
    auto const record = decodeLastAs<Palette>(spherical());
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(blockCount(*record), 1);
    ASSERT_NE(record->sphericalTM, nullptr);
    EXPECT_EQ(sizeof(FltSphericalTextureMappingStruct), 40U);
    EXPECT_EQ(record->sphericalTM->scale, 1.25F);
    EXPECT_EQ(record->sphericalTM->center[0], 2.5);
    EXPECT_EQ(record->sphericalTM->center[1], -3.5);
    EXPECT_EQ(record->sphericalTM->center[2], 4.5);
    EXPECT_EQ(record->sphericalTM->scaleRatio, 5.5F);
    EXPECT_EQ(record->sphericalTM->maxDimension, 6.5F);
    EXPECT_EQ(dumpOf(*record), title + "-- Opcode: 112  Length: 204 --\n" + headLines +
                                   " type: 4\n warpedFlag: 0\n" + sphericalLines);
}

TEST(FltRecordTextureMappingTest, RadialBlockDecodesAndDumpsEveryField)
{
    EXPECT_EQ(radial().lastRecord().size(), 168U + 192U);
    auto const record = decodeLastAs<Palette>(radial());
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(blockCount(*record), 1);
    ASSERT_NE(record->radialTM, nullptr);
    EXPECT_EQ(sizeof(FltRadialTextureMappingStruct), 192U);
    EXPECT_EQ(record->radialTM->activeGeometryPoint, 3);
    EXPECT_EQ(record->radialTM->radialScale, 1.25F);
    EXPECT_EQ(record->radialTM->lengthScale, 2.5F);
    EXPECT_EQ(record->radialTM->matrix[15], 116);
    EXPECT_EQ(record->radialTM->endPoint1[0], 4.5);
    EXPECT_EQ(record->radialTM->endPoint2[2], -9.5);
    EXPECT_EQ(dumpOf(*record), title + "-- Opcode: 112  Length: 360 --\n" + headLines +
                                   " type: 5\n warpedFlag: 0\n" + radialLines);
}

TEST(FltRecordTextureMappingTest, WarpedBlockDumpsTheCellsAsStoredAndNotThePairsOfTheFile)
{
    EXPECT_EQ(warped().lastRecord().size(), 168U + 392U);
    EXPECT_EQ(dump(warped()), title + "-- Opcode: 112  Length: 560 --\n" + headLines +
                                  " type: 0\n warpedFlag: 1\n" + warpedLines);
}

TEST(FltRecordTextureMappingTest, WarpedBlockStoresEveryEighthPairOfCellsUpToCell90)
{
    auto const record = decodeLastAs<Palette>(warped());
    ASSERT_NE(record, nullptr);
    ASSERT_NE(record->warpedTM, nullptr);
    FltWarpedTextureMappingStruct const& block = *record->warpedTM;
    EXPECT_EQ(sizeof block, 91U * 8U);
    EXPECT_EQ(reinterpret_cast<char const*>(block.fromPoint()) - reinterpret_cast<char const*>(&block),
              17 * 8);
    EXPECT_EQ(reinterpret_cast<char const*>(block.toPoint()) - reinterpret_cast<char const*>(&block), 33 * 8);
    EXPECT_EQ(block.activeGeometryPoint, 3);
    EXPECT_EQ(block.toolState, 4);
    EXPECT_EQ(block.matrix[0], 101);
    for (int cell = 17; cell <= 90; ++cell) {
        double expected = 0;
        for (int i = 0; i < 8; ++i) {
            if (cell == 17 + 8 * i || cell == 18 + 8 * i)
                expected = 200 + 2 * i + (cell - 17 - 8 * i);
        }
        for (int i = 0; i < 8; ++i) {
            if (cell == 33 + 8 * i || cell == 34 + 8 * i)
                expected = 300 + 2 * i + (cell - 33 - 8 * i);
        }
        EXPECT_EQ(block.cells[cell - 17], expected) << "cell " << cell;
    }
}

TEST(FltRecordTextureMappingTest, TypeAndWarpedFlagReadTheSameBytesUnderTwoLayouts)
{
    auto const record = decodeLastAs<Palette>(put(1));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(blockCount(*record), 2);
    ASSERT_NE(record->putTM, nullptr);
    ASSERT_NE(record->warpedTM, nullptr);
    EXPECT_EQ(record->warpedTM->activeGeometryPoint, record->putTM->toolState);
    EXPECT_EQ(record->warpedTM->toolState, record->putTM->activeGeometryPoint);
    EXPECT_EQ(record->warpedTM->matrix[0], record->putTM->lowerLeftCorner[0]);
    std::string const text = dumpOf(*record);
    std::string const begin = headLines + " type: 1\n warpedFlag: 1\n" + putLines +
                              "Warped Texture Mapping : \n"
                              "activeGeometryPoint : 1\n"
                              "toolState : -2\n"
                              "|  0.5  1.5  2.5  3.5    |\n";
    EXPECT_EQ(withoutFrame(text).substr(0, begin.size()), begin);
}

TEST(FltRecordTextureMappingTest, AnyWarpedFlagButZeroReadsTheWarpedBlock)
{
    for (int flag : {-1, 2, 0x01000000}) {
        auto const record = decodeLastAs<Palette>(put(flag));
        ASSERT_NE(record, nullptr);
        EXPECT_NE(record->warpedTM, nullptr);
    }
}

TEST(FltRecordTextureMappingTest, RecordDecodedAgainHoldsTheNewBlocksOnly)
{
    Palette record(580);
    std::string const text[] = {putLines, pointPutLines, sphericalLines, radialLines, warpedLines};
    FltWriter const writers[] = {put(), pointPut(), spherical(), radial(), warped()};
    for (int round = 0; round < 2; ++round)
        for (int i = 0; i < 5; ++i) {
            decodeInto(record, writers[i]);
            decodeInto(record, writers[i]);
            EXPECT_EQ(blockCount(record), 1);
            std::string const lines = withoutFrame(dumpOf(record));
            EXPECT_EQ(lines.substr(lines.find(" warpedFlag: ") + 15), text[i]);
        }
    decodeInto(record, warped(1));
    EXPECT_EQ(blockCount(record), 2);
    decodeInto(record, FltWriter().add("TextureMappingPalette"));
    EXPECT_EQ(blockCount(record), 0);
}

TEST(FltRecordTextureMappingTest, DumpOfABlockThatIsNotThereIsItsTitleLine)
{
    Palette const record(168);
    std::ostringstream os;
    record.putTMproperties(os);
    record.pointPutTMproperties(os);
    record.sphericalTMproperties(os);
    record.radialTMproperties(os);
    record.warpedTMproperties(os);
    EXPECT_EQ(os.str(), "Put Texture Mapping : \n"
                        "Point Put Texture Mapping : \n"
                        "Spherical Texture Mapping : \n"
                        "Radial Texture Mapping : \n"
                        "Warped Texture Mapping : \n");
}

TEST(FltRecordTextureMappingTest, ShortRecordsReadOnIntoTheFileAndThenZeros)
{
    for (FltWriter const& flt : {put(), pointPut(), spherical(), radial(), warped(), warped(1)})
        expectShortRecordsToReadOn(flt);
}

TEST(FltRecordTextureMappingTest, RecordCutBehindItsHeadTakesItsBlockFromTheBytesBehind)
{
    auto const record = decodeLastAs<Palette>(cutTo(spherical(), 168, FltWriter::bigFloat(2.5)));
    ASSERT_NE(record, nullptr);
    ASSERT_NE(record->sphericalTM, nullptr);
    EXPECT_EQ(record->sphericalTM->scale, 2.5F);
    EXPECT_EQ(record->sphericalTM->center[0], 0);
    EXPECT_EQ(record->sphericalTM->maxDimension, 0.0F);
}

} // namespace
