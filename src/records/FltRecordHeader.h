#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// The first record of every file: format revision, units, colour mode and the counters of the tool that
/// wrote it.
///
/// It gates its own decoding on the revision that it reads. Offsets up to 163 hold in every revision:
///
/// | Offset | Type     | Field                                                                          |
/// |--------|----------|--------------------------------------------------------------------------------|
/// | 4      | char[8]  | `id`                                                                           |
/// | 12     | int32    | `formatRevisionLevel`                                                          |
/// | 16     | int32    | `editRevisionLevel`                                                            |
/// | 20     | char[32] | `lastRevisionDateTime`                                                         |
/// | 52     | int16    | `idNextGroup`, `idNextLOD`, `idNextObject`, `idNextFace`                       |
/// | 60     | int16    | `multiplierDiviserUnit`                                                        |
/// | 62     | uint8    | `vertexCoordinateUnits`, `textWhite`                                           |
/// | 64     | uint32   | `flags`: bit 31 save vertex normals, 30 packed colour mode, 29 CAD view mode   |
/// | 68     | 24 bytes | reserved                                                                       |
/// | 92     | int32    | `projectionType`                                                               |
/// | 96     | 28 bytes | reserved                                                                       |
/// | 124    | int16    | `idNextDegreeOfFreedom`, `idVertexStorageType`                                 |
/// | 128    | int32    | `idDatabaseOrigin`                                                             |
/// | 132    | float64  | `southWestDatabaseCoordinateX`, `...Y`, `XdeltaToPlaceDatabase`, `Ydelta...`   |
///
/// Revision 1420 and above: 164 int16 `idNextSound`, `idNextPath`, 8 reserved bytes, 176 int16 `idNextClip`,
/// `idNextText`, `idNextBSP`, `idNextSwitch`. From revision 1500 on a reserved int32 stands at 184. Then
/// eight float64 from `southWestCornerLatitude` to `LambertLowerLatitude`, four int16 from
/// `idNextLightSource` to `idNextCat`, 8 reserved bytes and the int32 `earthEllipsoidModel`.
///
/// Revision 1540 and above: 272 int16 `idNextAdaptive`, then a tail whose offsets differ by revision. A field
/// without an offset isn't there:
///
/// | Type    | Field                    | 1540 to 1549 | 1550 to 1569 | 1570 to 1579 | from 1580 |
/// |---------|--------------------------|--------------|--------------|--------------|-----------|
/// | int16   | `idNextCurve`            |              | 274          | 274          | 274       |
/// | int16   | reserved                 | 274          | 276          | 276          |           |
/// | int16   | `utmZone`                |              |              |              | 276       |
/// | 6 bytes | reserved                 |              |              |              | 278       |
/// | float64 | `ZdeltaToPlaceDatabase`  |              |              | 278          | 284       |
/// | float64 | `radius`                 |              |              | 286          | 292       |
/// | uint16  | `idNextMesh`             |              |              | 294          | 300       |
/// | int16   | reserved                 |              |              | 296          |           |
/// | int16   | `idNextLightPointSystem` |              |              |              | 302       |
/// | int32   | reserved                 |              |              |              | 304       |
/// | float64 | `earthMajorAxis`         |              |              |              | 308       |
/// | float64 | `earthMinorAxis`         |              |              |              | 316       |
class FltRecordHeader : public PrimaryFltRecord
{
public:
    using PrimaryFltRecord::PrimaryFltRecord;

    int getOpcode() const override { return FltOpcode::header; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

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
};
