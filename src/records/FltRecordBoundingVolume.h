#pragma once

#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <cstdint>

/// The box around a node in whole numbers, as old files have it.
class FltRecordOldBoundingBox : public FltRecordOf<FltRecordOldBoundingBox, AncillaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::oldBoundingBox;
    static constexpr std::string_view title = "\n OLD BOUNDING BOX ";

    std::int32_t XcoordinateLowestCorner = 0;
    std::int32_t YcoordinateLowestCorner = 0;
    std::int32_t ZcoordinateLowestCorner = 0;
    std::int32_t XcoordinateHighestCorner = 0;
    std::int32_t YcoordinateHighestCorner = 0;
    std::int32_t ZcoordinateHighestCorner = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("XcoordinateLowestCorner", self.XcoordinateLowestCorner);
        visit("YcoordinateLowestCorner", self.YcoordinateLowestCorner);
        visit("ZcoordinateLowestCorner", self.ZcoordinateLowestCorner);
        visit("XcoordinateHighestCorner", self.XcoordinateHighestCorner);
        visit("YcoordinateHighestCorner", self.YcoordinateHighestCorner);
        visit("ZcoordinateHighestCorner", self.ZcoordinateHighestCorner);
    }
};

/// The box around a node.
class FltRecordBoundingBox : public FltRecordOf<FltRecordBoundingBox, AncillaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::boundingBox;
    static constexpr std::string_view title = "\n BOUNDING BOX ";

    std::int32_t reserved = 0;
    double XcoordinateLowestCorner = 0;
    double YcoordinateLowestCorner = 0;
    double ZcoordinateLowestCorner = 0;
    double XcoordinateHighestCorner = 0;
    double YcoordinateHighestCorner = 0;
    double ZcoordinateHighestCorner = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("XcoordinateLowestCorner", self.XcoordinateLowestCorner);
        visit("YcoordinateLowestCorner", self.YcoordinateLowestCorner);
        visit("ZcoordinateLowestCorner", self.ZcoordinateLowestCorner);
        visit("XcoordinateHighestCorner", self.XcoordinateHighestCorner);
        visit("YcoordinateHighestCorner", self.YcoordinateHighestCorner);
        visit("ZcoordinateHighestCorner", self.ZcoordinateHighestCorner);
    }
};

/// The sphere around a node.
class FltRecordBoundingVolumeSphere : public FltRecordOf<FltRecordBoundingVolumeSphere, AncillaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::boundingVolumeSphere;
    static constexpr std::string_view title = "\n BOUNDING VOLUME SPHERE ";

    std::int32_t reserved = 0;
    double radius = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("radius", self.radius);
    }
};

/// The cylinder around a node.
class FltRecordBoundingVolumeCylinder
    : public FltRecordOf<FltRecordBoundingVolumeCylinder, AncillaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::boundingVolumeCylinder;
    static constexpr std::string_view title = "\n BOUNDING VOLUME CYLINDER ";

    std::int32_t reserved = 0;
    double radius = 0;
    double heitght = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("radius", self.radius);
        visit("heitght", self.heitght);
    }
};

/// The centre of the bounding volume that stands before it.
class FltRecordBoundingVolumeCenter : public FltRecordOf<FltRecordBoundingVolumeCenter, AncillaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::boundingVolumeCenter;
    static constexpr std::string_view title = "\n BOUNDING VOLUME CENTER ";

    std::int32_t reserved = 0;
    double XcoordinateCenter = 0;
    double YcoordinateCenter = 0;
    double ZcoordinateCenter = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("XcoordinateCenter", self.XcoordinateCenter);
        visit("YcoordinateCenter", self.YcoordinateCenter);
        visit("ZcoordinateCenter", self.ZcoordinateCenter);
    }
};

/// The orientation of the bounding volume that stands before it.
class FltRecordBoundingVolumeOrientation
    : public FltRecordOf<FltRecordBoundingVolumeOrientation, AncillaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::boundingVolumeOrientation;
    static constexpr std::string_view title = "\n BOUNDING VOLUME ORIENTATION ";

    std::int32_t reserved = 0;
    double yawAngle = 0;   ///< In degrees.
    double pitchAngle = 0; ///< In degrees.
    double rollAngle = 0;  ///< In degrees.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("yawAngle", self.yawAngle);
        visit("pitchAngle", self.pitchAngle);
        visit("rollAngle", self.rollAngle);
    }
};
