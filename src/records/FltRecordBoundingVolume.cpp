#include "records/FltRecordBoundingVolume.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

std::ostream& FltRecordOldBoundingBox::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n OLD BOUNDING BOX ");
}

void FltRecordOldBoundingBox::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&XcoordinateLowestCorner, cursor);
    FltUtils::getInt32ValueThenDecal(&YcoordinateLowestCorner, cursor);
    FltUtils::getInt32ValueThenDecal(&ZcoordinateLowestCorner, cursor);
    FltUtils::getInt32ValueThenDecal(&XcoordinateHighestCorner, cursor);
    FltUtils::getInt32ValueThenDecal(&YcoordinateHighestCorner, cursor);
    FltUtils::getInt32ValueThenDecal(&ZcoordinateHighestCorner, cursor);
}

std::ostream& FltRecordOldBoundingBox::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, "XcoordinateLowestCorner: ", XcoordinateLowestCorner);
    FltDump::line(os, "YcoordinateLowestCorner: ", YcoordinateLowestCorner);
    FltDump::line(os, "ZcoordinateLowestCorner: ", ZcoordinateLowestCorner);
    FltDump::line(os, "XcoordinateHighestCorner: ", XcoordinateHighestCorner);
    FltDump::line(os, "YcoordinateHighestCorner: ", YcoordinateHighestCorner);
    FltDump::line(os, "ZcoordinateHighestCorner: ", ZcoordinateHighestCorner);
    return os;
}

std::ostream& FltRecordBoundingBox::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n BOUNDING BOX ");
}

void FltRecordBoundingBox::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
    FltUtils::getDouble64ValueThenDecal(&XcoordinateLowestCorner, cursor);
    FltUtils::getDouble64ValueThenDecal(&YcoordinateLowestCorner, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZcoordinateLowestCorner, cursor);
    FltUtils::getDouble64ValueThenDecal(&XcoordinateHighestCorner, cursor);
    FltUtils::getDouble64ValueThenDecal(&YcoordinateHighestCorner, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZcoordinateHighestCorner, cursor);
}

std::ostream& FltRecordBoundingBox::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, "XcoordinateLowestCorner: ", XcoordinateLowestCorner);
    FltDump::line(os, "YcoordinateLowestCorner: ", YcoordinateLowestCorner);
    FltDump::line(os, "ZcoordinateLowestCorner: ", ZcoordinateLowestCorner);
    FltDump::line(os, "XcoordinateHighestCorner: ", XcoordinateHighestCorner);
    FltDump::line(os, "YcoordinateHighestCorner: ", YcoordinateHighestCorner);
    FltDump::line(os, "ZcoordinateHighestCorner: ", ZcoordinateHighestCorner);
    return os;
}

std::ostream& FltRecordBoundingVolumeSphere::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n BOUNDING VOLUME SPHERE ");
}

void FltRecordBoundingVolumeSphere::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
    FltUtils::getDouble64ValueThenDecal(&radius, cursor);
}

std::ostream& FltRecordBoundingVolumeSphere::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, "radius: ", radius);
    return os;
}

std::ostream& FltRecordBoundingVolumeCylinder::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n BOUNDING VOLUME CYLINDER ");
}

void FltRecordBoundingVolumeCylinder::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
    FltUtils::getDouble64ValueThenDecal(&radius, cursor);
    FltUtils::getDouble64ValueThenDecal(&heitght, cursor);
}

std::ostream& FltRecordBoundingVolumeCylinder::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, "radius: ", radius);
    FltDump::line(os, "heitght: ", heitght);
    return os;
}

std::ostream& FltRecordBoundingVolumeCenter::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n BOUNDING VOLUME CENTER ");
}

void FltRecordBoundingVolumeCenter::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
    FltUtils::getDouble64ValueThenDecal(&XcoordinateCenter, cursor);
    FltUtils::getDouble64ValueThenDecal(&YcoordinateCenter, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZcoordinateCenter, cursor);
}

std::ostream& FltRecordBoundingVolumeCenter::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, "XcoordinateCenter: ", XcoordinateCenter);
    FltDump::line(os, "YcoordinateCenter: ", YcoordinateCenter);
    FltDump::line(os, "ZcoordinateCenter: ", ZcoordinateCenter);
    return os;
}

std::ostream& FltRecordBoundingVolumeOrientation::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n BOUNDING VOLUME ORIENTATION ");
}

void FltRecordBoundingVolumeOrientation::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
    FltUtils::getDouble64ValueThenDecal(&yawAngle, cursor);
    FltUtils::getDouble64ValueThenDecal(&pitchAngle, cursor);
    FltUtils::getDouble64ValueThenDecal(&rollAngle, cursor);
}

std::ostream& FltRecordBoundingVolumeOrientation::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, "yawAngle: ", yawAngle);
    FltDump::line(os, "pitchAngle: ", pitchAngle);
    FltDump::line(os, "rollAngle: ", rollAngle);
    return os;
}
