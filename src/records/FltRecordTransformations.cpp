#include "records/FltRecordTransformations.h"

#include "dump/FltDump.h"
#include "dump/FltDumpLine.h"
#include "records/FltUtils.h"

namespace
{

void showTriple(std::ostream& os, std::string_view label1, double value1, std::string_view label2,
                double value2, std::string_view label3, double value3)
{
    FltDumpLine line(os);
    line << label1 << value1 << label2 << value2 << label3 << value3;
    line.end();
}

} // namespace

void AbstractMatrixRecord::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    for (float(&row)[4] : matrix)
        FltUtils::getFloat32ValuesThenDecal(row, 4, cursor);
}

std::ostream& AbstractMatrixRecord::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    for (float const(&row)[4] : matrix)
        FltDump::rows(os, row, 1, 4);
    return os;
}

std::ostream& FltRecordMatrix::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n MATRIX RECORD ");
}

std::ostream& FltRecordGeneralMatrix::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n GENERAL_MATRIX RECORD ");
}

std::ostream& FltRecordVector::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n VECTOR RECORD ");
}

void FltRecordVector::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getFloat32ValueThenDecal(&i, cursor);
    FltUtils::getFloat32ValueThenDecal(&j, cursor);
    FltUtils::getFloat32ValueThenDecal(&k, cursor);
}

std::ostream& FltRecordVector::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    showTriple(os, "i=", i, "  j=", j, "  k=", k);
    return os;
}

std::ostream& FltRecordRotateAboutEdge::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n ROTATE ABOUT EDGE RECORD ");
}

void FltRecordRotateAboutEdge::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
    FltUtils::getDouble64ValueThenDecal(&XCenter1, cursor);
    FltUtils::getDouble64ValueThenDecal(&YCenter1, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZCenter1, cursor);
    FltUtils::getDouble64ValueThenDecal(&XCenter2, cursor);
    FltUtils::getDouble64ValueThenDecal(&YCenter2, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZCenter2, cursor);
    FltUtils::getFloat32ValueThenDecal(&angleToRotate, cursor);
}

std::ostream& FltRecordRotateAboutEdge::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, "XCenter1: ", XCenter1);
    FltDump::line(os, "YCenter1: ", YCenter1);
    FltDump::line(os, "ZCenter1: ", ZCenter1);
    FltDump::line(os, "XCenter2: ", XCenter2);
    FltDump::line(os, "YCenter2: ", YCenter2);
    FltDump::line(os, "ZCenter2: ", ZCenter2);
    FltDump::line(os, "angleToRotate: ", angleToRotate);
    return os;
}

std::ostream& FltRecordTranslate::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n TRANSLATE RECORD ");
}

void FltRecordTranslate::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
    FltUtils::getDouble64ValueThenDecal(&x, cursor);
    FltUtils::getDouble64ValueThenDecal(&y, cursor);
    FltUtils::getDouble64ValueThenDecal(&z, cursor);
    FltUtils::getDouble64ValueThenDecal(&deltaX, cursor);
    FltUtils::getDouble64ValueThenDecal(&deltaY, cursor);
    FltUtils::getDouble64ValueThenDecal(&deltaZ, cursor);
}

std::ostream& FltRecordTranslate::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    showTriple(os, "x=", x, "  y=", y, "  z=", z);
    showTriple(os, "deltaX=", deltaX, "  deltaY=", deltaY, "  deltaZ=", deltaZ);
    return os;
}

std::ostream& FltRecordScaleNonUniform::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n SCALE NON UNIFORM RECORD ");
}

void FltRecordScaleNonUniform::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
    FltUtils::getDouble64ValueThenDecal(&XCenter, cursor);
    FltUtils::getDouble64ValueThenDecal(&YCenter, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZCenter, cursor);
    FltUtils::getFloat32ValueThenDecal(&XScaleFactor, cursor);
    FltUtils::getFloat32ValueThenDecal(&YScaleFactor, cursor);
    FltUtils::getFloat32ValueThenDecal(&ZScaleFactor, cursor);
}

std::ostream& FltRecordScaleNonUniform::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, "XCenter.: ", XCenter);
    FltDump::line(os, "YCenter: ", YCenter);
    FltDump::line(os, "ZCenter: ", ZCenter);
    FltDump::line(os, "XScaleFactor: ", XScaleFactor);
    FltDump::line(os, "YScaleFactor: ", YScaleFactor);
    FltDump::line(os, "ZScaleFactor: ", ZScaleFactor);
    return os;
}

std::ostream& FltRecordRotateAboutPoint::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n ROTATE ABOUT POINT RECORD ");
}

void FltRecordRotateAboutPoint::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
    FltUtils::getDouble64ValueThenDecal(&XCenterOfRotation, cursor);
    FltUtils::getDouble64ValueThenDecal(&YCenterOfRotation, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZCenterOfRotation, cursor);
    FltUtils::getFloat32ValueThenDecal(&IAxisOfRotation, cursor);
    FltUtils::getFloat32ValueThenDecal(&JAxisOfRotation, cursor);
    FltUtils::getFloat32ValueThenDecal(&KAxisOfRotation, cursor);
    FltUtils::getFloat32ValueThenDecal(&angleToRotate, cursor);
}

std::ostream& FltRecordRotateAboutPoint::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, "XCenterOfRotation: ", XCenterOfRotation);
    FltDump::line(os, "YCenterOfRotation: ", YCenterOfRotation);
    FltDump::line(os, "ZCenterOfRotation: ", ZCenterOfRotation);
    FltDump::line(os, "IAxisOfRotation: ", IAxisOfRotation);
    FltDump::line(os, "JAxisOfRotation: ", JAxisOfRotation);
    FltDump::line(os, "KAxisOfRotation: ", KAxisOfRotation);
    FltDump::line(os, "angleToRotate: ", angleToRotate);
    return os;
}

std::ostream& FltRecordPutTransform::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n PUT TRANSFORM RECORD ");
}

void FltRecordPutTransform::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
    FltUtils::getDouble64ValueThenDecal(&XFromOrigin, cursor);
    FltUtils::getDouble64ValueThenDecal(&YFromOrigin, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZFromOrigin, cursor);
    FltUtils::getDouble64ValueThenDecal(&XFromAlign, cursor);
    FltUtils::getDouble64ValueThenDecal(&YFromAlign, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZFromAlign, cursor);
    FltUtils::getDouble64ValueThenDecal(&XFromTrack, cursor);
    FltUtils::getDouble64ValueThenDecal(&YFromTrack, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZFromTrack, cursor);
    FltUtils::getDouble64ValueThenDecal(&XToOrigin, cursor);
    FltUtils::getDouble64ValueThenDecal(&YToOrigin, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZToOrigin, cursor);
    FltUtils::getDouble64ValueThenDecal(&XToAlign, cursor);
    FltUtils::getDouble64ValueThenDecal(&YToAlign, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZToAlign, cursor);
    FltUtils::getDouble64ValueThenDecal(&XToTrack, cursor);
    FltUtils::getDouble64ValueThenDecal(&YToTrack, cursor);
    FltUtils::getDouble64ValueThenDecal(&ZToTrack, cursor);
    FltUtils::getFloat32ValueThenDecal(&angleToRotate, cursor);
}

std::ostream& FltRecordPutTransform::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, "XFromOrigin: ", XFromOrigin);
    FltDump::line(os, "YFromOrigin: ", YFromOrigin);
    FltDump::line(os, "ZFromOrigin: ", ZFromOrigin);
    FltDump::line(os, "XFromAlign: ", XFromAlign);
    FltDump::line(os, "YFromAlign: ", YFromAlign);
    FltDump::line(os, "ZFromAlign: ", ZFromAlign);
    FltDump::line(os, "XFromTrack: ", XFromTrack);
    FltDump::line(os, "YFromTrack: ", YFromTrack);
    FltDump::line(os, "ZFromTrack: ", ZFromTrack);
    FltDump::line(os, "XToOrigin: ", XToOrigin);
    FltDump::line(os, "YToOrigin: ", YToOrigin);
    FltDump::line(os, "ZToOrigin: ", ZToOrigin);
    FltDump::line(os, "XToAlign: ", XToAlign);
    FltDump::line(os, "YToAlign: ", YToAlign);
    FltDump::line(os, "ZToAlign: ", ZToAlign);
    FltDump::line(os, "XToTrack: ", XToTrack);
    FltDump::line(os, "YToTrack: ", YToTrack);
    FltDump::line(os, "ZToTrack: ", ZToTrack);
    FltDump::line(os, "angleToRotate: ", angleToRotate);
    return os;
}
