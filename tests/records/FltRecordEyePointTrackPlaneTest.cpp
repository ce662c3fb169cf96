#include "records/FltRecordEyePointTrackPlane.h"

#include "support/RecordText.h"
#include "support/ShortRecords.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{

using Record = FltRecordEyePointTrackPlane;

std::string const title = "\n EYEPOINT TRACKPLANE RECORD \n"
                          "  (PALETTE_RECORD)\n"
                          "-- Opcode: 83  Length: 4008 --\n";

FltWriter fullEyePoint()
{
    std::vector<double> rotation;
    std::vector<double> flyThrough;
    for (int i = 1; i <= 16; ++i) {
        rotation.push_back(i);
        flyThrough.push_back(i + 0.5);
    }
    FltWriter flt;
    flt.add("EyePointTrackPlane", {{"centerX", 1.5},
                                   {"centerY", -2.5},
                                   {"centerZ", 3e9},
                                   {"yawAngle", 4.5},
                                   {"pitchAngle", 0.1},
                                   {"rollAngle", 6.5},
                                   {"rotationMatrix", rotation},
                                   {"viewField", 7.5},
                                   {"scale", 8.5},
                                   {"nearClippingPlane", 9.5},
                                   {"farClippingPlane", 10.5},
                                   {"flyThroughMatrix", flyThrough},
                                   {"eyePointX", 11.5},
                                   {"eyePointY", 12.5},
                                   {"eyePointZ", 13.5},
                                   {"flyThroughYaw", 14.5},
                                   {"pitchThroughYaw", 15.5},
                                   {"eyeVectorI", 16.5},
                                   {"eyeVectorJ", 17.5},
                                   {"eyeVectorK", 18.5},
                                   {"flyThroughFlag", 19},
                                   {"orthoDrawingFlag", -20},
                                   {"isValidEyePointFlag", 21},
                                   {"imageOffsetX", 22},
                                   {"imageOffsetY", 23},
                                   {"imageZoom", 24}});
    return flt;
}

FltWriter fullTrackPlane(double gridAngle = 2.9)
{
    FltWriter flt;
    flt.add("EyePointTrackPlaneAsTrackPlane", {{"originX", 1.5},
                                               {"originY", 2.5},
                                               {"originZ", 3.5},
                                               {"alignmentX", 4.5},
                                               {"alignmentY", 5.5},
                                               {"alignmentZ", 6.5},
                                               {"planeX", 7.5},
                                               {"planeY", 8.5},
                                               {"planeZ", 9.5},
                                               {"gridFlag", 65},
                                               {"gridType", -1},
                                               {"gridUnder", 12},
                                               {"gridAngle", gridAngle},
                                               {"gridSpacingX", 13.5},
                                               {"gridSpacingY", 14.5},
                                               {"radialDirectionControl", 15},
                                               {"rectangularDirectionControl", -16},
                                               {"gridSnap", 17},
                                               {"gridSize", 18.5},
                                               {"gridVisibilityMask", -19}});
    return flt;
}

std::string const eyePointLines = "centerX: 1.5\n"
                                  "centerY: -2.5\n"
                                  "centerZ: 3e+09\n"
                                  "yawAngle: 4.5\n"
                                  "pitchAngle: 0.1\n"
                                  "rollAngle: 6.5\n"
                                  "rotationMatrix: \n"
                                  "|  1  2  3  4    |\n"
                                  "|  5  6  7  8    |\n"
                                  "|  9  10  11  12    |\n"
                                  "|  13  14  15  16    |\n"
                                  "viewField: 7.5\n"
                                  "scale: 8.5\n"
                                  "nearClippingPlane: 9.5\n"
                                  "farClippingPlane: 10.5\n"
                                  "flyThroughMatrix: \n"
                                  "|  1.5  2.5  3.5  4.5    |\n"
                                  "|  5.5  6.5  7.5  8.5    |\n"
                                  "|  9.5  10.5  11.5  12.5    |\n"
                                  "|  13.5  14.5  15.5  16.5    |\n"
                                  "eyePointX: 11.5\n"
                                  "eyePointY: 12.5\n"
                                  "eyePointZ: 13.5\n"
                                  "flyThroughYaw: 14.5\n"
                                  "pitchThroughYaw: 15.5\n"
                                  "eyeVectorI: 16.5\n"
                                  "eyeVectorJ: 17.5\n"
                                  "eyeVectorK: 18.5\n"
                                  "flyThroughFlag: 19\n"
                                  "orthoDrawingFlag: -20\n"
                                  "isValidEyePointFlag: 21\n"
                                  "imageOffsetX: 22\n"
                                  "imageOffsetY: 23\n"
                                  "imageZoom: 24\n";

std::string const trackPlaneLines = "activeFlag: -1\n"
                                    "originX: 1.5\n"
                                    "originY: 2.5\n"
                                    "originZ: 3.5\n"
                                    "alignmentX: 4.5\n"
                                    "alignmentY: 5.5\n"
                                    "alignmentZ: 6.5\n"
                                    "planeX: 7.5\n"
                                    "planeY: 8.5\n"
                                    "planeZ: 9.5\n"
                                    "gridFlag: 65\n"
                                    "gridType: -1\n"
                                    "gridUnder: 12\n"
                                    "gridAngle: 2\n"
                                    "gridSpacingX: 13.5\n"
                                    "gridSpacingY: 14.5\n"
                                    "radialDirectionControl: 15\n"
                                    "rectangularDirectionControl: -16\n"
                                    "gridSnap: 17\n"
                                    "gridFlagReserved: 4.5\n"
                                    "gridSize: 18.5\n"
                                    "gridVisibilityMask: -19\n";

std::string const invalidTrackPlane = "activeFlag != -1 (it is not a valid trackplane)\n";

/// Ten times the line that names an entry and these lines.
std::string tenOf(std::string const& name, std::string const& lines)
{
    std::string result;
    for (int i = 0; i < 10; ++i)
        result += name + "[" + std::to_string(i) + "]: *****\n" + lines;
    return result;
}

std::string trackPlanesOf(std::string const& dump)
{
    return dump.substr(dump.find("trackplane[0]"));
}

TEST(FltRecordEyePointTrackPlaneTest, DecodesEveryFieldOfAnEyePoint)
{
    auto const record = decodeLastAs<Record>(fullEyePoint());
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->getOpcode(), 83);
    EXPECT_EQ(record->getRecordCategory(), "PALETTE_RECORD");
    EXPECT_EQ(sizeof(Record::FltEyePointStruct), 272U);
    Record::FltEyePointStruct const& eye = record->eyePoint[0];
    EXPECT_EQ(eye.centerX, 1.5);
    EXPECT_EQ(eye.centerY, -2.5);
    EXPECT_EQ(eye.centerZ, 3e9);
    EXPECT_EQ(eye.yawAngle, 4.5F);
    EXPECT_EQ(eye.pitchAngle, 0.1F);
    EXPECT_EQ(eye.rollAngle, 6.5F);
    EXPECT_EQ(eye.rotationMatrix[0], 1.0F);
    EXPECT_EQ(eye.rotationMatrix[15], 16.0F);
    EXPECT_EQ(eye.viewField, 7.5F);
    EXPECT_EQ(eye.scale, 8.5F);
    EXPECT_EQ(eye.nearClippingPlane, 9.5F);
    EXPECT_EQ(eye.farClippingPlane, 10.5F);
    EXPECT_EQ(eye.flyThroughMatrix[0], 1.5F);
    EXPECT_EQ(eye.flyThroughMatrix[15], 16.5F);
    EXPECT_EQ(eye.eyePointX, 11.5F);
    EXPECT_EQ(eye.eyePointY, 12.5F);
    EXPECT_EQ(eye.eyePointZ, 13.5F);
    EXPECT_EQ(eye.flyThroughYaw, 14.5F);
    EXPECT_EQ(eye.pitchThroughYaw, 15.5F);
    EXPECT_EQ(eye.eyeVectorI, 16.5F);
    EXPECT_EQ(eye.eyeVectorJ, 17.5F);
    EXPECT_EQ(eye.eyeVectorK, 18.5F);
    EXPECT_EQ(eye.flyThroughFlag, 19);
    EXPECT_EQ(eye.orthoDrawingFlag, -20);
    EXPECT_EQ(eye.isValidEyePointFlag, 21);
    EXPECT_EQ(eye.imageOffsetX, 22);
    EXPECT_EQ(eye.imageOffsetY, 23);
    EXPECT_EQ(eye.imageZoom, 24);
}

TEST(FltRecordEyePointTrackPlaneTest, DecodesEveryFieldOfATrackPlane)
{
    auto const record = decodeLastAs<Record>(fullTrackPlane());
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(sizeof(Record::FltTrackPlaneStruct), 128U);
    Record::FltTrackPlaneStruct const& plane = record->trackPlane[0];
    EXPECT_EQ(plane.activeFlag, -1);
    EXPECT_EQ(plane.originX, 1.5);
    EXPECT_EQ(plane.originY, 2.5);
    EXPECT_EQ(plane.originZ, 3.5);
    EXPECT_EQ(plane.alignmentX, 4.5);
    EXPECT_EQ(plane.alignmentY, 5.5);
    EXPECT_EQ(plane.alignmentZ, 6.5);
    EXPECT_EQ(plane.planeX, 7.5);
    EXPECT_EQ(plane.planeY, 8.5);
    EXPECT_EQ(plane.planeZ, 9.5);
    EXPECT_EQ(plane.gridFlag, 65);
    EXPECT_EQ(plane.gridType, -1);
    EXPECT_EQ(plane.gridUnder, 12);
    EXPECT_EQ(plane.gridAngle, 2.9F);
    EXPECT_EQ(plane.gridSpacingX, 13.5);
    EXPECT_EQ(plane.gridSpacingY, 14.5);
    EXPECT_EQ(plane.radialDirectionControl, 15);
    EXPECT_EQ(plane.rectangularDirectionControl, -16);
    EXPECT_EQ(plane.gridSnap, 17);
    EXPECT_EQ(plane.gridSize, 18.5);
    EXPECT_EQ(plane.gridVisibilityMask, -19);
}

TEST(FltRecordEyePointTrackPlaneTest, ReservedFieldsAreKeptAndNotDumped)
{
    std::string const body = FltWriter::big32(0x11223344) + std::string(236, '\0') + std::string(32, 'r') +
                             FltWriter::big32(0x55667788);
    auto const record = decodeLastAs<Record>(FltWriter().addRaw(83, body));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->reserved, 0x11223344);
    EXPECT_EQ(std::string(record->eyePoint[9].reserved1, 32), std::string(32, 'r'));
    EXPECT_EQ(record->eyePoint[9].reserved2, 0x55667788);
    EXPECT_EQ(dumpOf(*record).find("rrr"), std::string::npos);
}

TEST(FltRecordEyePointTrackPlaneTest, EveryEyePointShowsTheSameNumbersAndEveryTrackPlaneIsInvalid)
{
    EXPECT_EQ(fullEyePoint().lastRecord().size(), 4008U);
    EXPECT_EQ(dumpOf(*decodeLast(fullEyePoint())),
              title + tenOf("eyePoint", eyePointLines) + tenOf("trackplane", invalidTrackPlane));
}

TEST(FltRecordEyePointTrackPlaneTest, LaterEntriesOfTheFileAreNotRead)
{
    FltWriter const one = fullEyePoint();
    std::string bytes = one.lastRecord().substr(4);
    std::fill(bytes.begin() + 276, bytes.end(), '\x7f');
    EXPECT_EQ(dumpOf(*decodeLast(FltWriter().addRaw(83, bytes))), dumpOf(*decodeLast(one)));
}

TEST(FltRecordEyePointTrackPlaneTest, ActiveFlagOfMinusOneShowsTheSameTrackPlaneTenTimes)
{
    EXPECT_EQ(fullTrackPlane().lastRecord().size(), 4008U);
    std::string const dump = dumpOf(*decodeLast(fullTrackPlane()));
    EXPECT_EQ(trackPlanesOf(dump), tenOf("trackplane", trackPlaneLines));
    EXPECT_EQ(dump.substr(0, title.size()), title);
}

TEST(FltRecordEyePointTrackPlaneTest, FirstEyePointBytesOtherThanMinusOneMakeEveryTrackPlaneInvalid)
{
    for (int flag : {0, 1, -2, 0x7fffffff}) {
        FltWriter flt;
        flt.add("EyePointTrackPlaneAsTrackPlane", {{"activeFlag", flag}});
        EXPECT_EQ(trackPlanesOf(dumpOf(*decodeLast(flt))), tenOf("trackplane", invalidTrackPlane));
    }
}

TEST(FltRecordEyePointTrackPlaneTest, GridFlagReservedRepeatsAlignmentX)
{
    for (double x : {0.0, -1.25e-8, 3.0, 1e300}) {
        FltWriter flt;
        flt.add("EyePointTrackPlaneAsTrackPlane", {{"alignmentX", x}});
        std::string const dump = dumpOf(*decodeLast(flt));
        auto const valueOf = [&](std::string const& label) {
            std::size_t const at = dump.find("\n" + label) + label.size() + 1;
            return dump.substr(at, dump.find('\n', at) - at);
        };
        EXPECT_EQ(valueOf("gridFlagReserved: "), valueOf("alignmentX: "));
    }
}

std::string gridAngleLine(double angle)
{
    std::string const dump = trackPlanesOf(dumpOf(*decodeLast(fullTrackPlane(angle))));
    std::size_t const at = dump.find("gridAngle: ");
    return dump.substr(at, dump.find('\n', at) - at);
}

TEST(FltRecordEyePointTrackPlaneTest, GridAnglePrintsTruncatedTowardsZero)
{
    EXPECT_EQ(gridAngleLine(2.9), "gridAngle: 2");
    EXPECT_EQ(gridAngleLine(-2.9), "gridAngle: -2");
    EXPECT_EQ(gridAngleLine(0.99), "gridAngle: 0");
    EXPECT_EQ(gridAngleLine(-0.0), "gridAngle: 0");
    EXPECT_EQ(gridAngleLine(2147483520.0), "gridAngle: 2147483520");
    EXPECT_EQ(gridAngleLine(-2147483648.0), "gridAngle: -2147483648");
}

TEST(FltRecordEyePointTrackPlaneTest, GridAngleBeyondAnIntegerPrintsTheNearestAndNotANumberPrints0)
{
    EXPECT_EQ(gridAngleLine(2147483648.0), "gridAngle: 2147483647");
    EXPECT_EQ(gridAngleLine(1e38), "gridAngle: 2147483647");
    EXPECT_EQ(gridAngleLine(-1e38), "gridAngle: -2147483648");
    EXPECT_EQ(gridAngleLine(std::numeric_limits<double>::infinity()), "gridAngle: 2147483647");
    EXPECT_EQ(gridAngleLine(-std::numeric_limits<double>::infinity()), "gridAngle: -2147483648");
    EXPECT_EQ(gridAngleLine(std::numeric_limits<double>::quiet_NaN()), "gridAngle: 0");
}

TEST(FltRecordEyePointTrackPlaneTest, OneStructureIsFilledAndDumpedByItself)
{
    FltWriter const eyes = fullEyePoint();
    FltWriter const planes = fullTrackPlane();
    Record record(4008);
    Record::FltEyePointStruct eye;
    Record::FltTrackPlaneStruct plane;
    std::string eyeBytes = eyes.lastRecord().substr(8, 272);
    std::string planeBytes = planes.lastRecord().substr(8, 128);
    record.getEyePointPropertiesFromData(&eye, &eyeBytes[0]);
    record.getTrackPlanePropertiesFromData(&plane, &planeBytes[0]);
    std::ostringstream os;
    record.eyePointProperties(eye, os);
    record.trackPlaneProperties(plane, os);
    EXPECT_EQ(os.str(), eyePointLines + trackPlaneLines);
}

TEST(FltRecordEyePointTrackPlaneTest, ShortRecordsReadOnIntoTheFileAndThenZeros)
{
    FltWriter eye = fullEyePoint();
    FltWriter plane = fullTrackPlane();
    expectShortRecordsToReadOn(eye.resizeLast(280));
    expectShortRecordsToReadOn(plane.resizeLast(280));
}

TEST(FltRecordEyePointTrackPlaneTest, RecordCutInFrontOfItsEyePointsTakesThemFromTheBytesBehind)
{
    auto const record = decodeLastAs<Record>(cutTo(fullEyePoint(), 8, FltWriter::bigDouble(7.5)));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->eyePoint[0].centerX, 7.5);
    EXPECT_EQ(record->eyePoint[9].centerX, 7.5);
    EXPECT_EQ(record->eyePoint[0].centerY, 0);
    EXPECT_EQ(record->eyePoint[9].imageZoom, 0);
}

} // namespace
