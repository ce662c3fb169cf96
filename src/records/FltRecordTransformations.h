#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <cstdint>

/// A record that holds a matrix.
class AbstractMatrixRecord : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    float matrix[4][4] = {}; ///< Row after row, for row vectors: the last row is the translation.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("matrix", self.matrix, dumpAs::rows(4));
    }
};

/// The matrix that places the node before: the product of all its single steps.
class FltRecordMatrix : public FltRecordOf<FltRecordMatrix, AbstractMatrixRecord>
{
public:
    using FltRecordOf::FltRecordOf;
    static constexpr int opcode = FltOpcode::matrix;
    static constexpr std::string_view title = "\n MATRIX RECORD ";
};

/// A matrix as one of the single steps.
class FltRecordGeneralMatrix : public FltRecordOf<FltRecordGeneralMatrix, AbstractMatrixRecord>
{
public:
    using FltRecordOf::FltRecordOf;
    static constexpr int opcode = FltOpcode::generalMatrix;
    static constexpr std::string_view title = "\n GENERAL_MATRIX RECORD ";
};

/// A direction for the node before.
class FltRecordVector : public FltRecordOf<FltRecordVector, AncillaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::vector;
    static constexpr std::string_view title = "\n VECTOR RECORD ";

    float i = 0;
    float j = 0;
    float k = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("i", self.i, dumpAs::piece("i="));
        visit("j", self.j, dumpAs::piece("  j="));
        visit("k", self.k, dumpAs::piece("  k="));
        visit.endLine();
    }
};

/// A turn about the line through two points. The angle is in degrees.
class FltRecordRotateAboutEdge : public FltRecordOf<FltRecordRotateAboutEdge, AncillaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::rotateAboutEdge;
    static constexpr std::string_view title = "\n ROTATE ABOUT EDGE RECORD ";

    std::int32_t reserved = 0;
    double XCenter1 = 0;
    double YCenter1 = 0;
    double ZCenter1 = 0;
    double XCenter2 = 0;
    double YCenter2 = 0;
    double ZCenter2 = 0;
    float angleToRotate = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("XCenter1", self.XCenter1);
        visit("YCenter1", self.YCenter1);
        visit("ZCenter1", self.ZCenter1);
        visit("XCenter2", self.XCenter2);
        visit("YCenter2", self.YCenter2);
        visit("ZCenter2", self.ZCenter2);
        visit("angleToRotate", self.angleToRotate);
    }
};

/// A move: a reference point and how far it goes.
class FltRecordTranslate : public FltRecordOf<FltRecordTranslate, AncillaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::translate;
    static constexpr std::string_view title = "\n TRANSLATE RECORD ";

    std::int32_t reserved = 0;
    double x = 0;
    double y = 0;
    double z = 0;
    double deltaX = 0;
    double deltaY = 0;
    double deltaZ = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("x", self.x, dumpAs::piece("x="));
        visit("y", self.y, dumpAs::piece("  y="));
        visit("z", self.z, dumpAs::piece("  z="));
        visit.endLine();
        visit("deltaX", self.deltaX, dumpAs::piece("deltaX="));
        visit("deltaY", self.deltaY, dumpAs::piece("  deltaY="));
        visit("deltaZ", self.deltaZ, dumpAs::piece("  deltaZ="));
        visit.endLine();
    }
};

/// A scale about a centre, with a factor for each axis.
class FltRecordScaleNonUniform : public FltRecordOf<FltRecordScaleNonUniform, AncillaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::scaleNonUniform;
    static constexpr std::string_view title = "\n SCALE NON UNIFORM RECORD ";

    std::int32_t reserved = 0;
    double XCenter = 0;
    double YCenter = 0;
    double ZCenter = 0;
    float XScaleFactor = 0;
    float YScaleFactor = 0;
    float ZScaleFactor = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("XCenter", self.XCenter, "XCenter.: ");
        visit("YCenter", self.YCenter);
        visit("ZCenter", self.ZCenter);
        visit("XScaleFactor", self.XScaleFactor);
        visit("YScaleFactor", self.YScaleFactor);
        visit("ZScaleFactor", self.ZScaleFactor);
    }
};

/// A turn about an axis through a point. The angle is in degrees.
class FltRecordRotateAboutPoint : public FltRecordOf<FltRecordRotateAboutPoint, AncillaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::rotateAboutPoint;
    static constexpr std::string_view title = "\n ROTATE ABOUT POINT RECORD ";

    std::int32_t reserved = 0;
    double XCenterOfRotation = 0;
    double YCenterOfRotation = 0;
    double ZCenterOfRotation = 0;
    float IAxisOfRotation = 0;
    float JAxisOfRotation = 0;
    float KAxisOfRotation = 0;
    float angleToRotate = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("XCenterOfRotation", self.XCenterOfRotation);
        visit("YCenterOfRotation", self.YCenterOfRotation);
        visit("ZCenterOfRotation", self.ZCenterOfRotation);
        visit("IAxisOfRotation", self.IAxisOfRotation);
        visit("JAxisOfRotation", self.JAxisOfRotation);
        visit("KAxisOfRotation", self.KAxisOfRotation);
        visit("angleToRotate", self.angleToRotate);
    }
};

/// A move of three points, origin, alignment and track, onto three others. The angle is in degrees.
///
/// The factory never makes one: it reads records of this opcode as FltRecordRotateAboutEdge.
class FltRecordPutTransform : public FltRecordOf<FltRecordPutTransform, AncillaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::putTransform;
    static constexpr std::string_view title = "\n PUT TRANSFORM RECORD ";

    std::int32_t reserved = 0;
    double XFromOrigin = 0;
    double YFromOrigin = 0;
    double ZFromOrigin = 0;
    double XFromAlign = 0;
    double YFromAlign = 0;
    double ZFromAlign = 0;
    double XFromTrack = 0;
    double YFromTrack = 0;
    double ZFromTrack = 0;
    double XToOrigin = 0;
    double YToOrigin = 0;
    double ZToOrigin = 0;
    double XToAlign = 0;
    double YToAlign = 0;
    double ZToAlign = 0;
    double XToTrack = 0;
    double YToTrack = 0;
    double ZToTrack = 0;
    float angleToRotate = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("reserved", self.reserved, dumpAs::nothing);
        visit("XFromOrigin", self.XFromOrigin);
        visit("YFromOrigin", self.YFromOrigin);
        visit("ZFromOrigin", self.ZFromOrigin);
        visit("XFromAlign", self.XFromAlign);
        visit("YFromAlign", self.YFromAlign);
        visit("ZFromAlign", self.ZFromAlign);
        visit("XFromTrack", self.XFromTrack);
        visit("YFromTrack", self.YFromTrack);
        visit("ZFromTrack", self.ZFromTrack);
        visit("XToOrigin", self.XToOrigin);
        visit("YToOrigin", self.YToOrigin);
        visit("ZToOrigin", self.ZToOrigin);
        visit("XToAlign", self.XToAlign);
        visit("YToAlign", self.YToAlign);
        visit("ZToAlign", self.ZToAlign);
        visit("XToTrack", self.XToTrack);
        visit("YToTrack", self.YToTrack);
        visit("ZToTrack", self.ZToTrack);
        visit("angleToRotate", self.angleToRotate);
    }
};
