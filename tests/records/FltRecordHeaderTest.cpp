#include "records/FltRecordHeader.h"

#include "support/RecordText.h"
#include "support/ShortRecords.h"

#include <gtest/gtest.h>

namespace
{

/// A header in which every field that the revision knows has a value of its own.
FltWriter fullHeader(int revision)
{
    FltWriter::Fields fields = {{"id", "db"},
                                {"editRevisionLevel", 5},
                                {"lastRevisionDateTime", "Tue Mar  4 10:20:30 1997"},
                                {"idNextGroup", 11},
                                {"idNextLOD", -12},
                                {"idNextObject", 13},
                                {"idNextFace", -1},
                                {"multiplierDiviserUnit", -10},
                                {"vertexCoordinateUnits", 255},
                                {"textWhite", 200},
                                {"flags", 0xa0000000U},
                                {"projectionType", 14},
                                {"idNextDegreeOfFreedom", 15},
                                {"idVertexStorageType", 16},
                                {"idDatabaseOrigin", 100},
                                {"southWestDatabaseCoordinateX", 17.5},
                                {"southWestDatabaseCoordinateY", 18.5},
                                {"XdeltaToPlaceDatabase", 19.5},
                                {"YdeltaToPlaceDatabase", 20.5}};
    auto const add = [&fields](FltWriter::Fields const& more) {
        fields.insert(fields.end(), more.begin(), more.end());
    };
    if (revision >= 1420)
        add({{"idNextSound", 21},
             {"idNextPath", 22},
             {"idNextClip", 23},
             {"idNextText", 24},
             {"idNextBSP", 25},
             {"idNextSwitch", 26},
             {"southWestCornerLatitude", 27.5},
             {"southWestCornerLongitude", 28.5},
             {"northEastCornerLatitude", 29.5},
             {"northEastCornerLongitude", 30.5},
             {"originLatitude", 31.5},
             {"originLongitude", 32.5},
             {"LambertUpperLatitude", 33.5},
             {"LambertLowerLatitude", 34.5},
             {"idNextLightSource", 35},
             {"idNextLightPoint", 36},
             {"idNextRoad", 37},
             {"idNextCat", 38},
             {"earthEllipsoidModel", -39}});
    if (revision >= 1540)
        add({{"idNextAdaptive", 40}});
    if (revision >= 1550)
        add({{"idNextCurve", 41}});
    if (revision >= 1570)
        add({{"ZdeltaToPlaceDatabase", 43.5}, {"radius", 44.5}, {"idNextMesh", 65535}});
    if (revision >= 1580)
        add({{"utmZone", -42},
             {"idNextLightPointSystem", 46},
             {"earthMajorAxis", 6378137.0},
             {"earthMinorAxis", 6356752.5}});
    return FltWriter(revision, fields);
}

std::string linesUpTo1419(int revision)
{
    return "formatRevisionLevel: " + std::to_string(revision) +
           "\n"
           "editRevisionLevel: 5\n"
           "lastRevisionDateTime: Tue Mar  4 10:20:30 1997idNextGroup: 11\n"
           "idNextLOD: -12\n"
           "idNextObject: 13\n"
           "idNextFace: 4294967295\n"
           "multiplierDiviserUnit: -10\n"
           "vertexCoordinateUnits: 255\n"
           "textWhite: 200\n"
           "flags: \n"
           "        Save vertex normals: 1\n"
           "        Packed Color mode: 0\n"
           "        CAD View mode: 1\n"
           "projectionType: 14\n"
           "idNextDegreeOfFreedom: 15\n"
           "idVertexStorageType: 16\n"
           "idDatabaseOrigin: 100\n"
           "southWestDatabaseCoordinateX: 17.5\n"
           "southWestDatabaseCoordinateY: 18.5\n"
           "XdeltaToPlaceDatabase: 19.5\n"
           "YdeltaToPlaceDatabase: 20.5\n";
}

std::string const linesFrom1420 = "idNextSound: 21\n"
                                  "idNextPath: 22\n"
                                  "idNextClip: 23\n"
                                  "idNextText: 24\n"
                                  "idNextBSP: 25\n"
                                  "idNextSwitch: 26\n"
                                  "southWestCornerLatitude: 27.5\n"
                                  "southWestCornerLongitude: 28.5\n"
                                  "northEastCornerLatitude: 29.5\n"
                                  "northEastCornerLongitude: 30.5\n"
                                  "originLatitude: 31.5\n"
                                  "originLongitude: 32.5\n"
                                  "LambertUpperLatitude: 33.5\n"
                                  "LambertLowerLatitude: 34.5\n"
                                  "idNextLightSource: 35\n"
                                  "idNextLightPoint: 36\n"
                                  "idNextRoad: 37\n"
                                  "idNextCat: 38\n"
                                  "earthEllipsoidModel: -39\n";

std::string const lineFrom1540 = "idNextAdaptive : 40\n";
std::string const lineFrom1550 = "idNextCurve: 41\n";
std::string const lineFrom1580 = "utmZone: -42\n";
std::string const linesFrom1570 = "ZdeltaToPlaceDatabase: 43.5\n"
                                  "radius: 44.5\n"
                                  "idNextMesh: 65535\n";
std::string const tailFrom1580 = "idNextLightPointSystem: 46\n"
                                 "earthMajorAxis: 6.37814e+06\n"
                                 "earthMinorAxis: 6.35675e+06\n";

std::string headerDump(int revision, unsigned length, std::string const& lines)
{
    return "\n HEADER RECORD \n"
           "  (PRIMARY_RECORD)\n"
           "-- Opcode: 1  Length: " +
           std::to_string(length) + " --\n" + linesUpTo1419(revision) + lines + "\n";
}

std::string dump(FltWriter const& flt)
{
    return dumpOf(*decodeLast(flt));
}

std::unique_ptr<FltRecordHeader> decoded(FltWriter const& flt)
{
    return decodeLastAs<FltRecordHeader>(flt);
}

TEST(FltRecordHeaderTest, DecodesEveryFieldOfRevision1580)
{
    auto const header = decoded(fullHeader(1580));
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(header->getOpcode(), 1);
    EXPECT_EQ(header->getRecordCategory(), "PRIMARY_RECORD");
    EXPECT_STREQ(header->id, "db");
    EXPECT_EQ(header->formatRevisionLevel, 1580);
    EXPECT_EQ(header->editRevisionLevel, 5);
    EXPECT_STREQ(header->lastRevisionDateTime, "Tue Mar  4 10:20:30 1997");
    EXPECT_EQ(header->idNextGroup, 11);
    EXPECT_EQ(header->idNextLOD, -12);
    EXPECT_EQ(header->idNextObject, 13);
    EXPECT_EQ(header->idNextFace, -1);
    EXPECT_EQ(header->multiplierDiviserUnit, -10);
    EXPECT_EQ(header->vertexCoordinateUnits, 255);
    EXPECT_EQ(header->textWhite, 200);
    EXPECT_EQ(header->flags, 0xa0000000U);
    EXPECT_EQ(header->projectionType, 14);
    EXPECT_EQ(header->idNextDegreeOfFreedom, 15);
    EXPECT_EQ(header->idVertexStorageType, 16);
    EXPECT_EQ(header->idDatabaseOrigin, 100);
    EXPECT_EQ(header->southWestDatabaseCoordinateX, 17.5);
    EXPECT_EQ(header->southWestDatabaseCoordinateY, 18.5);
    EXPECT_EQ(header->XdeltaToPlaceDatabase, 19.5);
    EXPECT_EQ(header->YdeltaToPlaceDatabase, 20.5);
    EXPECT_EQ(header->idNextSound, 21);
    EXPECT_EQ(header->idNextPath, 22);
    EXPECT_EQ(header->idNextClip, 23);
    EXPECT_EQ(header->idNextText, 24);
    EXPECT_EQ(header->idNextBSP, 25);
    EXPECT_EQ(header->idNextSwitch, 26);
    EXPECT_EQ(header->southWestCornerLatitude, 27.5);
    EXPECT_EQ(header->southWestCornerLongitude, 28.5);
    EXPECT_EQ(header->northEastCornerLatitude, 29.5);
    EXPECT_EQ(header->northEastCornerLongitude, 30.5);
    EXPECT_EQ(header->originLatitude, 31.5);
    EXPECT_EQ(header->originLongitude, 32.5);
    EXPECT_EQ(header->LambertUpperLatitude, 33.5);
    EXPECT_EQ(header->LambertLowerLatitude, 34.5);
    EXPECT_EQ(header->idNextLightSource, 35);
    EXPECT_EQ(header->idNextLightPoint, 36);
    EXPECT_EQ(header->idNextRoad, 37);
    EXPECT_EQ(header->idNextCat, 38);
    EXPECT_EQ(header->earthEllipsoidModel, -39);
    EXPECT_EQ(header->idNextAdaptive, 40);
    EXPECT_EQ(header->idNextCurve, 41);
    EXPECT_EQ(header->utmZone, -42);
    EXPECT_EQ(header->ZdeltaToPlaceDatabase, 43.5);
    EXPECT_EQ(header->radius, 44.5);
    EXPECT_EQ(header->idNextMesh, 65535);
    EXPECT_EQ(header->idNextLightPointSystem, 46);
    EXPECT_EQ(header->earthMajorAxis, 6378137.0);
    EXPECT_EQ(header->earthMinorAxis, 6356752.5);
}

TEST(FltRecordHeaderTest, Revision14StopsBehindYdeltaToPlaceDatabase)
{
    EXPECT_EQ(dump(fullHeader(14)), headerDump(14, 164, ""));
    auto const header = decoded(fullHeader(14).addBytes(std::string(200, 'x')));
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(header->YdeltaToPlaceDatabase, 20.5);
    EXPECT_EQ(header->idNextSound, 0);
    EXPECT_EQ(header->earthMinorAxis, 0);
}

TEST(FltRecordHeaderTest, Revisions1419And1420StandOnBothSidesOfTheGeographicFields)
{
    EXPECT_EQ(dump(fullHeader(1419)), headerDump(1419, 164, ""));
    EXPECT_EQ(dump(fullHeader(1420)), headerDump(1420, 268, linesFrom1420));
}

TEST(FltRecordHeaderTest, Revisions1499And1500StandOnBothSidesOfAReservedWord)
{
    EXPECT_EQ(dump(fullHeader(1499)), headerDump(1499, 268, linesFrom1420));
    EXPECT_EQ(dump(fullHeader(1500)), headerDump(1500, 272, linesFrom1420));
}

TEST(FltRecordHeaderTest, Revision1480ReadsTheCornerLatitudesFromOffset184AndRevision1500From188)
{
    for (int revision : {1480, 1499, 1500, 1580}) {
        std::string bytes = fullHeader(revision).lastRecord().substr(4);
        bytes.replace((revision < 1500 ? 184 : 188) - 4, 8, FltWriter::bigDouble(-7.25));
        auto const header = decoded(FltWriter().addRaw(1, bytes));
        ASSERT_NE(header, nullptr);
        EXPECT_EQ(header->southWestCornerLatitude, -7.25) << revision;
        EXPECT_EQ(header->southWestCornerLongitude, 28.5) << revision;
    }
}

TEST(FltRecordHeaderTest, Revisions1539And1540StandOnBothSidesOfIdNextAdaptive)
{
    EXPECT_EQ(dump(fullHeader(1539)), headerDump(1539, 272, linesFrom1420));
    EXPECT_EQ(dump(fullHeader(1540)), headerDump(1540, 276, linesFrom1420 + lineFrom1540));
}

TEST(FltRecordHeaderTest, Revisions1549And1550StandOnBothSidesOfIdNextCurve)
{
    EXPECT_EQ(dump(fullHeader(1549)), headerDump(1549, 276, linesFrom1420 + lineFrom1540));
    EXPECT_EQ(dump(fullHeader(1550)), headerDump(1550, 278, linesFrom1420 + lineFrom1540 + lineFrom1550));
}

TEST(FltRecordHeaderTest, Revision1540TakesTheWordAt274AsReserved)
{
    for (int revision : {1540, 1549, 1550}) {
        FltWriter flt = fullHeader(revision);
        std::string bytes = flt.lastRecord().substr(4);
        bytes.replace(274 - 4, 2, FltWriter::big16(99));
        auto const header = decoded(FltWriter().addRaw(1, bytes));
        ASSERT_NE(header, nullptr);
        EXPECT_EQ(header->reserved6, revision < 1550 ? 99 : 0) << revision;
        EXPECT_EQ(header->idNextCurve, revision < 1550 ? 0 : 99) << revision;
    }
}

TEST(FltRecordHeaderTest, Revisions1569And1570StandOnBothSidesOfTheZDelta)
{
    EXPECT_EQ(dump(fullHeader(1569)), headerDump(1569, 278, linesFrom1420 + lineFrom1540 + lineFrom1550));
    EXPECT_EQ(dump(fullHeader(1570)),
              headerDump(1570, 298, linesFrom1420 + lineFrom1540 + lineFrom1550 + linesFrom1570));
}

TEST(FltRecordHeaderTest, Revisions1579And1580StandOnBothSidesOfTheUtmZone)
{
    EXPECT_EQ(dump(fullHeader(1579)),
              headerDump(1579, 298, linesFrom1420 + lineFrom1540 + lineFrom1550 + linesFrom1570));
    EXPECT_EQ(dump(fullHeader(1580)), headerDump(1580, 324,
                                                 linesFrom1420 + lineFrom1540 + lineFrom1550 + lineFrom1580 +
                                                     linesFrom1570 + tailFrom1580));
}

TEST(FltRecordHeaderTest, Revision1570ReadsZdeltaToPlaceDatabaseAt278AndRevision1580At284)
{
    for (int revision : {1570, 1579, 1580}) {
        std::string bytes = fullHeader(revision).lastRecord().substr(4);
        bytes.replace((revision < 1580 ? 278 : 284) - 4, 8, FltWriter::bigDouble(-7.25));
        auto const header = decoded(FltWriter().addRaw(1, bytes));
        ASSERT_NE(header, nullptr);
        EXPECT_EQ(header->ZdeltaToPlaceDatabase, -7.25) << revision;
        EXPECT_EQ(header->radius, 44.5) << revision;
        EXPECT_EQ(header->idNextMesh, 65535) << revision;
    }
}

TEST(FltRecordHeaderTest, RevisionAboveAllKnownOnesIsReadAs1580)
{
    EXPECT_EQ(dump(fullHeader(1600)), headerDump(1600, 324,
                                                 linesFrom1420 + lineFrom1540 + lineFrom1550 + lineFrom1580 +
                                                     linesFrom1570 + tailFrom1580));
}

TEST(FltRecordHeaderTest, NegativeRevisionStopsBehindTheCommonFields)
{
    std::string bytes = fullHeader(14).lastRecord().substr(4);
    bytes.replace(12 - 4, 4, FltWriter::big32(-1));
    EXPECT_EQ(dump(FltWriter().addRaw(1, bytes)), headerDump(-1, 164, ""));
}

TEST(FltRecordHeaderTest, DecodesByTheRevisionThatItReadsAndNotByTheOneOfTheFactory)
{
    FltWriter flt(11);
    flt.addRaw(1, fullHeader(1580).lastRecord().substr(4));
    auto const header = decoded(flt);
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(header->earthMinorAxis, 6356752.5);
}

TEST(FltRecordHeaderTest, EachFlagBitHasItsOwnLine)
{
    auto const flagLines = [](unsigned flags) {
        std::string const text = dump(FltWriter(1570, {{"flags", flags}}));
        std::size_t const begin = text.find("flags: \n");
        return text.substr(begin, text.find("projectionType") - begin);
    };
    EXPECT_EQ(flagLines(0x80000000U),
              "flags: \n        Save vertex normals: 1\n        Packed Color mode: 0\n"
              "        CAD View mode: 0\n");
    EXPECT_EQ(flagLines(0x40000000U),
              "flags: \n        Save vertex normals: 0\n        Packed Color mode: 1\n"
              "        CAD View mode: 0\n");
    EXPECT_EQ(flagLines(0x20000000U),
              "flags: \n        Save vertex normals: 0\n        Packed Color mode: 0\n"
              "        CAD View mode: 1\n");
    EXPECT_EQ(flagLines(0x1fffffffU),
              "flags: \n        Save vertex normals: 0\n        Packed Color mode: 0\n"
              "        CAD View mode: 0\n");
}

TEST(FltRecordHeaderTest, IdNextFacePrintsUnsigned)
{
    auto const line = [](int value) {
        std::string const text = dump(FltWriter(1570, {{"idNextFace", value}}));
        std::size_t const begin = text.find("idNextFace: ");
        return text.substr(begin, text.find('\n', begin) - begin);
    };
    EXPECT_EQ(line(32767), "idNextFace: 32767");
    EXPECT_EQ(line(-1), "idNextFace: 4294967295");
    EXPECT_EQ(line(-32768), "idNextFace: 4294934528");
}

TEST(FltRecordHeaderTest, FullLastRevisionDateTimePrintsOnIntoTheMembersBehindIt)
{
    std::string const text =
        dump(FltWriter(1570, {{"lastRevisionDateTime", std::string(32, 'd')}, {"idNextGroup", 0x4142}}));
    EXPECT_NE(text.find("\nlastRevisionDateTime: " + std::string(32, 'd') + "BAidNextGroup: 16706\n"),
              std::string::npos);
}

TEST(FltRecordHeaderTest, LastRevisionDateTimeWithoutAnyZeroBehindItEndsInFrontOfTheGapInTheObject)
{
    FltWriter flt;
    flt.addRaw(1, std::string(320, 'A'));
    std::string const text = dump(flt);
    EXPECT_NE(text.find("\nlastRevisionDateTime: " + std::string(112, 'A') + "idNextGroup: 16705\n"),
              std::string::npos);
}

TEST(FltRecordHeaderTest, IdAndReservedBytesAreKeptAndNotDumped)
{
    std::string bytes = fullHeader(1580).lastRecord().substr(4);
    std::string const before = dump(FltWriter().addRaw(1, bytes));
    auto const fill = [&bytes](std::size_t offset, std::size_t size) {
        bytes.replace(offset - 4, size, size, 'r');
    };
    fill(4, 8);
    fill(68, 24);
    fill(96, 28);
    fill(168, 8);
    fill(184, 4);
    fill(260, 8);
    fill(278, 6);
    fill(304, 4);
    auto const header = decoded(FltWriter().addRaw(1, bytes));
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(dumpOf(*header), before);
    EXPECT_EQ(std::string(header->id, 8), "rrrrrrrr");
    EXPECT_EQ(std::string(header->reserved1, 24), std::string(24, 'r'));
    EXPECT_EQ(std::string(header->reserved2, 28), std::string(28, 'r'));
    EXPECT_EQ(std::string(header->reserved3, 8), std::string(8, 'r'));
    EXPECT_EQ(header->reserved4, 0x72727272);
    EXPECT_EQ(std::string(header->reserved5, 8), std::string(8, 'r'));
    EXPECT_EQ(std::string(header->reserved7, 6), "rrrrrr");
    EXPECT_EQ(header->reserved9, 0x72727272);
}

TEST(FltRecordHeaderTest, HeaderShorterThanItsRevisionImpliesReadsOnIntoTheFileAndThenZeros)
{
    for (int revision : {14, 1420, 1500, 1540, 1550, 1570, 1580})
        expectShortRecordsToReadOn(fullHeader(revision));
}

TEST(FltRecordHeaderTest, HeaderCutBehindItsFlagsTakesTheRestFromTheBytesBehind)
{
    std::string const following = std::string(24, '\0') + FltWriter::big32(7);
    auto const header = decoded(cutTo(fullHeader(1580), 68, following));
    ASSERT_NE(header, nullptr);
    EXPECT_EQ(header->flags, 0xa0000000U);
    EXPECT_EQ(header->projectionType, 7);
    EXPECT_EQ(header->idDatabaseOrigin, 0);
    EXPECT_EQ(header->earthMinorAxis, 0);
}

} // namespace
