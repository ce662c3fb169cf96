#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"

#include <cstdint>

/// The box around a node in whole numbers, as old files have it.
class FltRecordOldBoundingBox : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::oldBoundingBox; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

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
class FltRecordBoundingBox : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::boundingBox; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

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
class FltRecordBoundingVolumeSphere : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::boundingVolumeSphere; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

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
class FltRecordBoundingVolumeCylinder : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::boundingVolumeCylinder; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

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
class FltRecordBoundingVolumeCenter : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::boundingVolumeCenter; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

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
class FltRecordBoundingVolumeOrientation : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    int getOpcode() const override { return FltOpcode::boundingVolumeOrientation; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;
    void getPropertiesFromData(char* data) override;

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
