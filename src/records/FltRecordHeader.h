#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <cstdint>

/// The first record of every file: format revision, units, colour mode and the counters of the tool that
/// wrote it.
///
/// It gates its own decoding on the revision that it reads.
class FltRecordHeader : public FltRecordOf<FltRecordHeader, PrimaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::header;
    static constexpr std::string_view title = "\n HEADER RECORD ";

    char id[8] = {}; ///< Name of the database, not dumped.
    std::int32_t formatRevisionLevel = 0;
    std::int32_t editRevisionLevel = 0;
    char lastRevisionDateTime[32] = {};
    std::int16_t idNextGroup = 0;
    std::int16_t idNextLOD = 0;
    std::int16_t idNextObject = 0;
    std::int16_t idNextFace = 0;
    std::int16_t multiplierDiviserUnit = 0;
    std::uint8_t vertexCoordinateUnits = 0;
    std::uint8_t textWhite = 0;
    std::uint32_t flags = 0;
    char reserved1[24] = {};
    static constexpr std::int32_t geodetic = 5; ///< Of projectionType: x and y are degrees.
    std::int32_t projectionType = 0;
    char reserved2[28] = {};
    std::int16_t idNextDegreeOfFreedom = 0;
    std::int16_t idVertexStorageType = 0;
    std::int32_t idDatabaseOrigin = 0;
    double southWestDatabaseCoordinateX = 0;
    double southWestDatabaseCoordinateY = 0;
    double XdeltaToPlaceDatabase = 0;
    double YdeltaToPlaceDatabase = 0;
    std::int16_t idNextSound = 0;
    std::int16_t idNextPath = 0;
    char reserved3[8] = {};
    std::int16_t idNextClip = 0;
    std::int16_t idNextText = 0;
    std::int16_t idNextBSP = 0;
    std::int16_t idNextSwitch = 0;
    std::int32_t reserved4 = 0;
    double southWestCornerLatitude = 0;
    double southWestCornerLongitude = 0;
    double northEastCornerLatitude = 0;
    double northEastCornerLongitude = 0;
    double originLatitude = 0;
    double originLongitude = 0;
    double LambertUpperLatitude = 0;
    double LambertLowerLatitude = 0;
    std::int16_t idNextLightSource = 0;
    std::int16_t idNextLightPoint = 0;
    std::int16_t idNextRoad = 0;
    std::int16_t idNextCat = 0;
    char reserved5[8] = {};
    std::int32_t earthEllipsoidModel = 0;
    std::int16_t idNextAdaptive = 0;
    std::int16_t idNextCurve = 0;
    std::int16_t reserved6 = 0;
    std::int16_t utmZone = 0;
    char reserved7[6] = {};
    double ZdeltaToPlaceDatabase = 0;
    double radius = 0;
    std::uint16_t idNextMesh = 0;
    std::int16_t reserved8 = 0;
    std::int16_t idNextLightPointSystem = 0;
    std::int32_t reserved9 = 0;
    double earthMajorAxis = 0;
    double earthMinorAxis = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("id", self.id, dumpAs::nothing);
        visit("formatRevisionLevel", self.formatRevisionLevel);
        visit("editRevisionLevel", self.editRevisionLevel);
        // After idDatabaseOrigin the object has a gap, whose bytes have no value.
        visit("lastRevisionDateTime", self.lastRevisionDateTime,
              dumpAs::textWithoutEnd(&self.idDatabaseOrigin + 1));
        visit("idNextGroup", self.idNextGroup);
        visit("idNextLOD", self.idNextLOD);
        visit("idNextObject", self.idNextObject);
        visit("idNextFace", self.idNextFace, dumpAs::unsignedNumber);
        visit("multiplierDiviserUnit", self.multiplierDiviserUnit);
        visit("vertexCoordinateUnits", self.vertexCoordinateUnits);
        visit("textWhite", self.textWhite);
        visit("flags", self.flags, dumpAs::heading);
        visit.flag("saveVertexNormals", self.flags, 31, "        Save vertex normals: ");
        visit.flag("packedColorMode", self.flags, 30, "        Packed Color mode: ");
        visit.flag("cadViewMode", self.flags, 29, "        CAD View mode: ");
        visit("reserved1", self.reserved1, dumpAs::nothing);
        visit("projectionType", self.projectionType);
        visit("reserved2", self.reserved2, dumpAs::nothing);
        visit("idNextDegreeOfFreedom", self.idNextDegreeOfFreedom);
        visit("idVertexStorageType", self.idVertexStorageType);
        visit("idDatabaseOrigin", self.idDatabaseOrigin);
        visit("southWestDatabaseCoordinateX", self.southWestDatabaseCoordinateX);
        visit("southWestDatabaseCoordinateY", self.southWestDatabaseCoordinateY);
        visit("XdeltaToPlaceDatabase", self.XdeltaToPlaceDatabase);
        visit("YdeltaToPlaceDatabase", self.YdeltaToPlaceDatabase);
        if (visit.from(self.formatRevisionLevel, 1420)) {
            visit("idNextSound", self.idNextSound);
            visit("idNextPath", self.idNextPath);
            visit("reserved3", self.reserved3, dumpAs::nothing);
            visit("idNextClip", self.idNextClip);
            visit("idNextText", self.idNextText);
            visit("idNextBSP", self.idNextBSP);
            visit("idNextSwitch", self.idNextSwitch);
            if (visit.from(self.formatRevisionLevel, 1500))
                visit("reserved4", self.reserved4, dumpAs::nothing);
            visit("southWestCornerLatitude", self.southWestCornerLatitude);
            visit("southWestCornerLongitude", self.southWestCornerLongitude);
            visit("northEastCornerLatitude", self.northEastCornerLatitude);
            visit("northEastCornerLongitude", self.northEastCornerLongitude);
            visit("originLatitude", self.originLatitude);
            visit("originLongitude", self.originLongitude);
            visit("LambertUpperLatitude", self.LambertUpperLatitude);
            visit("LambertLowerLatitude", self.LambertLowerLatitude);
            visit("idNextLightSource", self.idNextLightSource);
            visit("idNextLightPoint", self.idNextLightPoint);
            visit("idNextRoad", self.idNextRoad);
            visit("idNextCat", self.idNextCat);
            visit("reserved5", self.reserved5, dumpAs::nothing);
            visit("earthEllipsoidModel", self.earthEllipsoidModel);
        }
        if (visit.from(self.formatRevisionLevel, 1540))
            visit("idNextAdaptive", self.idNextAdaptive, "idNextAdaptive : ");
        if (visit.from(self.formatRevisionLevel, 1550))
            visit("idNextCurve", self.idNextCurve);
        if (visit.from(self.formatRevisionLevel, 1580)) {
            visit("utmZone", self.utmZone);
            visit("reserved7", self.reserved7, dumpAs::nothing);
        } else if (visit.from(self.formatRevisionLevel, 1540)) {
            visit("reserved6", self.reserved6, dumpAs::nothing);
        }
        if (visit.from(self.formatRevisionLevel, 1570)) {
            visit("ZdeltaToPlaceDatabase", self.ZdeltaToPlaceDatabase);
            visit("radius", self.radius);
            visit("idNextMesh", self.idNextMesh);
        }
        if (visit.from(self.formatRevisionLevel, 1580)) {
            visit("idNextLightPointSystem", self.idNextLightPointSystem);
            visit("reserved9", self.reserved9, dumpAs::nothing);
            visit("earthMajorAxis", self.earthMajorAxis);
            visit("earthMinorAxis", self.earthMinorAxis);
        } else if (visit.from(self.formatRevisionLevel, 1570)) {
            visit("reserved8", self.reserved8, dumpAs::nothing);
        }
        visit.show("");
    }
};
