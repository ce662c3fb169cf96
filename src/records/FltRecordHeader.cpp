#include "records/FltRecordHeader.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

std::ostream& FltRecordHeader::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n HEADER RECORD ");
}

void FltRecordHeader::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getBytesThenDecal(id, sizeof id, cursor);
    FltUtils::getInt32ValueThenDecal(&formatRevisionLevel, cursor);
    FltUtils::getInt32ValueThenDecal(&editRevisionLevel, cursor);
    FltUtils::getBytesThenDecal(lastRevisionDateTime, sizeof lastRevisionDateTime, cursor);
    FltUtils::getInt16ValueThenDecal(&idNextGroup, cursor);
    FltUtils::getInt16ValueThenDecal(&idNextLOD, cursor);
    FltUtils::getInt16ValueThenDecal(&idNextObject, cursor);
    FltUtils::getInt16ValueThenDecal(&idNextFace, cursor);
    FltUtils::getInt16ValueThenDecal(&multiplierDiviserUnit, cursor);
    FltUtils::getUInt8ValueThenDecal(&vertexCoordinateUnits, cursor);
    FltUtils::getUInt8ValueThenDecal(&textWhite, cursor);
    FltUtils::getUInt32ValueThenDecal(&flags, cursor);
    FltUtils::getBytesThenDecal(reserved1, sizeof reserved1, cursor);
    FltUtils::getInt32ValueThenDecal(&projectionType, cursor);
    FltUtils::getBytesThenDecal(reserved2, sizeof reserved2, cursor);
    FltUtils::getInt16ValueThenDecal(&idNextDegreeOfFreedom, cursor);
    FltUtils::getInt16ValueThenDecal(&idVertexStorageType, cursor);
    FltUtils::getInt32ValueThenDecal(&idDatabaseOrigin, cursor);
    FltUtils::getDouble64ValueThenDecal(&southWestDatabaseCoordinateX, cursor);
    FltUtils::getDouble64ValueThenDecal(&southWestDatabaseCoordinateY, cursor);
    FltUtils::getDouble64ValueThenDecal(&XdeltaToPlaceDatabase, cursor);
    FltUtils::getDouble64ValueThenDecal(&YdeltaToPlaceDatabase, cursor);
    if (formatRevisionLevel < 1420)
        return;

    FltUtils::getInt16ValueThenDecal(&idNextSound, cursor);
    FltUtils::getInt16ValueThenDecal(&idNextPath, cursor);
    FltUtils::getBytesThenDecal(reserved3, sizeof reserved3, cursor);
    FltUtils::getInt16ValueThenDecal(&idNextClip, cursor);
    FltUtils::getInt16ValueThenDecal(&idNextText, cursor);
    FltUtils::getInt16ValueThenDecal(&idNextBSP, cursor);
    FltUtils::getInt16ValueThenDecal(&idNextSwitch, cursor);
    if (formatRevisionLevel >= 1500)
        FltUtils::getInt32ValueThenDecal(&reserved4, cursor);
    FltUtils::getDouble64ValueThenDecal(&southWestCornerLatitude, cursor);
    FltUtils::getDouble64ValueThenDecal(&southWestCornerLongitude, cursor);
    FltUtils::getDouble64ValueThenDecal(&northEastCornerLatitude, cursor);
    FltUtils::getDouble64ValueThenDecal(&northEastCornerLongitude, cursor);
    FltUtils::getDouble64ValueThenDecal(&originLatitude, cursor);
    FltUtils::getDouble64ValueThenDecal(&originLongitude, cursor);
    FltUtils::getDouble64ValueThenDecal(&LambertUpperLatitude, cursor);
    FltUtils::getDouble64ValueThenDecal(&LambertLowerLatitude, cursor);
    FltUtils::getInt16ValueThenDecal(&idNextLightSource, cursor);
    FltUtils::getInt16ValueThenDecal(&idNextLightPoint, cursor);
    FltUtils::getInt16ValueThenDecal(&idNextRoad, cursor);
    FltUtils::getInt16ValueThenDecal(&idNextCat, cursor);
    FltUtils::getBytesThenDecal(reserved5, sizeof reserved5, cursor);
    FltUtils::getInt32ValueThenDecal(&earthEllipsoidModel, cursor);
    if (formatRevisionLevel < 1540)
        return;

    FltUtils::getInt16ValueThenDecal(&idNextAdaptive, cursor);
    if (formatRevisionLevel >= 1550)
        FltUtils::getInt16ValueThenDecal(&idNextCurve, cursor);
    if (formatRevisionLevel >= 1580) {
        FltUtils::getInt16ValueThenDecal(&utmZone, cursor);
        FltUtils::getBytesThenDecal(reserved7, sizeof reserved7, cursor);
    } else {
        FltUtils::getInt16ValueThenDecal(&reserved6, cursor);
    }
    if (formatRevisionLevel < 1570)
        return;

    FltUtils::getDouble64ValueThenDecal(&ZdeltaToPlaceDatabase, cursor);
    FltUtils::getDouble64ValueThenDecal(&radius, cursor);
    FltUtils::getUInt16ValueThenDecal(&idNextMesh, cursor);
    if (formatRevisionLevel < 1580) {
        FltUtils::getInt16ValueThenDecal(&reserved8, cursor);
        return;
    }
    FltUtils::getInt16ValueThenDecal(&idNextLightPointSystem, cursor);
    FltUtils::getInt32ValueThenDecal(&reserved9, cursor);
    FltUtils::getDouble64ValueThenDecal(&earthMajorAxis, cursor);
    FltUtils::getDouble64ValueThenDecal(&earthMinorAxis, cursor);
}

std::ostream& FltRecordHeader::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, "formatRevisionLevel: ", formatRevisionLevel);
    FltDump::line(os, "editRevisionLevel: ", editRevisionLevel);
    // Behind idDatabaseOrigin the object has a gap, whose bytes have no value.
    FltDump::textWithoutEnd(os, "lastRevisionDateTime: ", lastRevisionDateTime, &idDatabaseOrigin + 1);
    FltDump::line(os, "idNextGroup: ", idNextGroup);
    FltDump::line(os, "idNextLOD: ", idNextLOD);
    FltDump::line(os, "idNextObject: ", idNextObject);
    FltDump::line(os, "idNextFace: ", static_cast<std::uint32_t>(idNextFace));
    FltDump::line(os, "multiplierDiviserUnit: ", multiplierDiviserUnit);
    FltDump::line(os, "vertexCoordinateUnits: ", vertexCoordinateUnits);
    FltDump::line(os, "textWhite: ", textWhite);
    FltDump::line(os, "flags: ");
    FltDump::flag(os, "        Save vertex normals: ", flags, 31);
    FltDump::flag(os, "        Packed Color mode: ", flags, 30);
    FltDump::flag(os, "        CAD View mode: ", flags, 29);
    FltDump::line(os, "projectionType: ", projectionType);
    FltDump::line(os, "idNextDegreeOfFreedom: ", idNextDegreeOfFreedom);
    FltDump::line(os, "idVertexStorageType: ", idVertexStorageType);
    FltDump::line(os, "idDatabaseOrigin: ", idDatabaseOrigin);
    FltDump::line(os, "southWestDatabaseCoordinateX: ", southWestDatabaseCoordinateX);
    FltDump::line(os, "southWestDatabaseCoordinateY: ", southWestDatabaseCoordinateY);
    FltDump::line(os, "XdeltaToPlaceDatabase: ", XdeltaToPlaceDatabase);
    FltDump::line(os, "YdeltaToPlaceDatabase: ", YdeltaToPlaceDatabase);
    if (formatRevisionLevel >= 1420) {
        FltDump::line(os, "idNextSound: ", idNextSound);
        FltDump::line(os, "idNextPath: ", idNextPath);
        FltDump::line(os, "idNextClip: ", idNextClip);
        FltDump::line(os, "idNextText: ", idNextText);
        FltDump::line(os, "idNextBSP: ", idNextBSP);
        FltDump::line(os, "idNextSwitch: ", idNextSwitch);
        FltDump::line(os, "southWestCornerLatitude: ", southWestCornerLatitude);
        FltDump::line(os, "southWestCornerLongitude: ", southWestCornerLongitude);
        FltDump::line(os, "northEastCornerLatitude: ", northEastCornerLatitude);
        FltDump::line(os, "northEastCornerLongitude: ", northEastCornerLongitude);
        FltDump::line(os, "originLatitude: ", originLatitude);
        FltDump::line(os, "originLongitude: ", originLongitude);
        FltDump::line(os, "LambertUpperLatitude: ", LambertUpperLatitude);
        FltDump::line(os, "LambertLowerLatitude: ", LambertLowerLatitude);
        FltDump::line(os, "idNextLightSource: ", idNextLightSource);
        FltDump::line(os, "idNextLightPoint: ", idNextLightPoint);
        FltDump::line(os, "idNextRoad: ", idNextRoad);
        FltDump::line(os, "idNextCat: ", idNextCat);
        FltDump::line(os, "earthEllipsoidModel: ", earthEllipsoidModel);
    }
    if (formatRevisionLevel >= 1540)
        FltDump::line(os, "idNextAdaptive : ", idNextAdaptive);
    if (formatRevisionLevel >= 1550)
        FltDump::line(os, "idNextCurve: ", idNextCurve);
    if (formatRevisionLevel >= 1580)
        FltDump::line(os, "utmZone: ", utmZone);
    if (formatRevisionLevel >= 1570) {
        FltDump::line(os, "ZdeltaToPlaceDatabase: ", ZdeltaToPlaceDatabase);
        FltDump::line(os, "radius: ", radius);
        FltDump::line(os, "idNextMesh: ", idNextMesh);
    }
    if (formatRevisionLevel >= 1580) {
        FltDump::line(os, "idNextLightPointSystem: ", idNextLightPointSystem);
        FltDump::line(os, "earthMajorAxis: ", earthMajorAxis);
        FltDump::line(os, "earthMinorAxis: ", earthMinorAxis);
    }
    FltDump::line(os, "");
    return os;
}
