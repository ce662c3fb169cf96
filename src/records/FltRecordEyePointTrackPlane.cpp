#include "records/FltRecordEyePointTrackPlane.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

constexpr int validTrackPlane = -1;

/// The number without its fraction; a float can hold more than an integer can.
std::int32_t truncated(float value)
{
    using Limits = std::numeric_limits<std::int32_t>;
    if (std::isnan(value))
        return 0;
    return static_cast<std::int32_t>(std::clamp<double>(value, Limits::min(), Limits::max()));
}

} // namespace

std::ostream& FltRecordEyePointTrackPlane::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n EYEPOINT TRACKPLANE RECORD ");
}

void FltRecordEyePointTrackPlane::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
    for (FltEyePointStruct& eye : eyePoint)
        getEyePointPropertiesFromData(&eye, cursor);
    for (FltTrackPlaneStruct& plane : trackPlane)
        getTrackPlanePropertiesFromData(&plane, cursor);
}

void FltRecordEyePointTrackPlane::getEyePointPropertiesFromData(FltEyePointStruct* eye, char* data)
{
    char* cursor = data;
    FltUtils::getDouble64ValueThenDecal(&eye->centerX, cursor);
    FltUtils::getDouble64ValueThenDecal(&eye->centerY, cursor);
    FltUtils::getDouble64ValueThenDecal(&eye->centerZ, cursor);
    FltUtils::getFloat32ValueThenDecal(&eye->yawAngle, cursor);
    FltUtils::getFloat32ValueThenDecal(&eye->pitchAngle, cursor);
    FltUtils::getFloat32ValueThenDecal(&eye->rollAngle, cursor);
    FltUtils::getFloat32ValuesThenDecal(eye->rotationMatrix, 16, cursor);
    FltUtils::getFloat32ValueThenDecal(&eye->viewField, cursor);
    FltUtils::getFloat32ValueThenDecal(&eye->scale, cursor);
    FltUtils::getFloat32ValueThenDecal(&eye->nearClippingPlane, cursor);
    FltUtils::getFloat32ValueThenDecal(&eye->farClippingPlane, cursor);
    FltUtils::getFloat32ValuesThenDecal(eye->flyThroughMatrix, 16, cursor);
    FltUtils::getFloat32ValueThenDecal(&eye->eyePointX, cursor);
    FltUtils::getFloat32ValueThenDecal(&eye->eyePointY, cursor);
    FltUtils::getFloat32ValueThenDecal(&eye->eyePointZ, cursor);
    FltUtils::getFloat32ValueThenDecal(&eye->flyThroughYaw, cursor);
    FltUtils::getFloat32ValueThenDecal(&eye->pitchThroughYaw, cursor);
    FltUtils::getFloat32ValueThenDecal(&eye->eyeVectorI, cursor);
    FltUtils::getFloat32ValueThenDecal(&eye->eyeVectorJ, cursor);
    FltUtils::getFloat32ValueThenDecal(&eye->eyeVectorK, cursor);
    FltUtils::getInt32ValueThenDecal(&eye->flyThroughFlag, cursor);
    FltUtils::getInt32ValueThenDecal(&eye->orthoDrawingFlag, cursor);
    FltUtils::getInt32ValueThenDecal(&eye->isValidEyePointFlag, cursor);
    FltUtils::getInt32ValueThenDecal(&eye->imageOffsetX, cursor);
    FltUtils::getInt32ValueThenDecal(&eye->imageOffsetY, cursor);
    FltUtils::getInt32ValueThenDecal(&eye->imageZoom, cursor);
    FltUtils::getBytesThenDecal(eye->reserved1, sizeof eye->reserved1, cursor);
    FltUtils::getInt32ValueThenDecal(&eye->reserved2, cursor);
}

void FltRecordEyePointTrackPlane::getTrackPlanePropertiesFromData(FltTrackPlaneStruct* plane, char* data)
{
    char* cursor = data;
    FltUtils::getInt32ValueThenDecal(&plane->activeFlag, cursor);
    FltUtils::getInt32ValueThenDecal(&plane->reserved1, cursor);
    FltUtils::getDouble64ValueThenDecal(&plane->originX, cursor);
    FltUtils::getDouble64ValueThenDecal(&plane->originY, cursor);
    FltUtils::getDouble64ValueThenDecal(&plane->originZ, cursor);
    FltUtils::getDouble64ValueThenDecal(&plane->alignmentX, cursor);
    FltUtils::getDouble64ValueThenDecal(&plane->alignmentY, cursor);
    FltUtils::getDouble64ValueThenDecal(&plane->alignmentZ, cursor);
    FltUtils::getDouble64ValueThenDecal(&plane->planeX, cursor);
    FltUtils::getDouble64ValueThenDecal(&plane->planeY, cursor);
    FltUtils::getDouble64ValueThenDecal(&plane->planeZ, cursor);
    FltUtils::getInt8ValueThenDecal(&plane->gridFlag, cursor);
    FltUtils::getInt8ValueThenDecal(&plane->gridType, cursor);
    FltUtils::getInt8ValueThenDecal(&plane->gridUnder, cursor);
    FltUtils::getInt8ValueThenDecal(&plane->reserved2, cursor);
    FltUtils::getFloat32ValueThenDecal(&plane->gridAngle, cursor);
    FltUtils::getDouble64ValueThenDecal(&plane->gridSpacingX, cursor);
    FltUtils::getDouble64ValueThenDecal(&plane->gridSpacingY, cursor);
    FltUtils::getInt8ValueThenDecal(&plane->radialDirectionControl, cursor);
    FltUtils::getInt8ValueThenDecal(&plane->rectangularDirectionControl, cursor);
    FltUtils::getInt8ValueThenDecal(&plane->gridSnap, cursor);
    FltUtils::getInt8ValueThenDecal(&plane->reserved3, cursor);
    FltUtils::getInt32ValueThenDecal(&plane->reserved4, cursor);
    FltUtils::getDouble64ValueThenDecal(&plane->gridSize, cursor);
    FltUtils::getInt32ValueThenDecal(&plane->gridVisibilityMask, cursor);
    FltUtils::getInt32ValueThenDecal(&plane->reserved5, cursor);
}

std::ostream& FltRecordEyePointTrackPlane::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    int index = 0;
    for (FltEyePointStruct const& eye : eyePoint) {
        FltDump::line(os, "eyePoint[", index++, "]: *****");
        eyePointProperties(eye, os);
    }
    index = 0;
    for (FltTrackPlaneStruct const& plane : trackPlane) {
        FltDump::line(os, "trackplane[", index++, "]: *****");
        trackPlaneProperties(plane, os);
    }
    return os;
}

std::ostream& FltRecordEyePointTrackPlane::eyePointProperties(FltEyePointStruct const& eye,
                                                              std::ostream& os) const
{
    FltDump::line(os, "centerX: ", eye.centerX);
    FltDump::line(os, "centerY: ", eye.centerY);
    FltDump::line(os, "centerZ: ", eye.centerZ);
    FltDump::line(os, "yawAngle: ", eye.yawAngle);
    FltDump::line(os, "pitchAngle: ", eye.pitchAngle);
    FltDump::line(os, "rollAngle: ", eye.rollAngle);
    FltDump::line(os, "rotationMatrix: ");
    FltDump::rows(os, eye.rotationMatrix, 4, 4);
    FltDump::line(os, "viewField: ", eye.viewField);
    FltDump::line(os, "scale: ", eye.scale);
    FltDump::line(os, "nearClippingPlane: ", eye.nearClippingPlane);
    FltDump::line(os, "farClippingPlane: ", eye.farClippingPlane);
    FltDump::line(os, "flyThroughMatrix: ");
    FltDump::rows(os, eye.flyThroughMatrix, 4, 4);
    FltDump::line(os, "eyePointX: ", eye.eyePointX);
    FltDump::line(os, "eyePointY: ", eye.eyePointY);
    FltDump::line(os, "eyePointZ: ", eye.eyePointZ);
    FltDump::line(os, "flyThroughYaw: ", eye.flyThroughYaw);
    FltDump::line(os, "pitchThroughYaw: ", eye.pitchThroughYaw);
    FltDump::line(os, "eyeVectorI: ", eye.eyeVectorI);
    FltDump::line(os, "eyeVectorJ: ", eye.eyeVectorJ);
    FltDump::line(os, "eyeVectorK: ", eye.eyeVectorK);
    FltDump::line(os, "flyThroughFlag: ", eye.flyThroughFlag);
    FltDump::line(os, "orthoDrawingFlag: ", eye.orthoDrawingFlag);
    FltDump::line(os, "isValidEyePointFlag: ", eye.isValidEyePointFlag);
    FltDump::line(os, "imageOffsetX: ", eye.imageOffsetX);
    FltDump::line(os, "imageOffsetY: ", eye.imageOffsetY);
    FltDump::line(os, "imageZoom: ", eye.imageZoom);
    return os;
}

std::ostream& FltRecordEyePointTrackPlane::trackPlaneProperties(FltTrackPlaneStruct const& plane,
                                                                std::ostream& os) const
{
    if (plane.activeFlag != validTrackPlane) {
        FltDump::line(os, "activeFlag != -1 (it is not a valid trackplane)");
        return os;
    }
    FltDump::line(os, "activeFlag: ", plane.activeFlag);
    FltDump::line(os, "originX: ", plane.originX);
    FltDump::line(os, "originY: ", plane.originY);
    FltDump::line(os, "originZ: ", plane.originZ);
    FltDump::line(os, "alignmentX: ", plane.alignmentX);
    FltDump::line(os, "alignmentY: ", plane.alignmentY);
    FltDump::line(os, "alignmentZ: ", plane.alignmentZ);
    FltDump::line(os, "planeX: ", plane.planeX);
    FltDump::line(os, "planeY: ", plane.planeY);
    FltDump::line(os, "planeZ: ", plane.planeZ);
    FltDump::line(os, "gridFlag: ", plane.gridFlag);
    FltDump::line(os, "gridType: ", plane.gridType);
    FltDump::line(os, "gridUnder: ", plane.gridUnder);
    FltDump::line(os, "gridAngle: ", truncated(plane.gridAngle));
    FltDump::line(os, "gridSpacingX: ", plane.gridSpacingX);
    FltDump::line(os, "gridSpacingY: ", plane.gridSpacingY);
    FltDump::line(os, "radialDirectionControl: ", plane.radialDirectionControl);
    FltDump::line(os, "rectangularDirectionControl: ", plane.rectangularDirectionControl);
    FltDump::line(os, "gridSnap: ", plane.gridSnap);
    FltDump::line(os, "gridFlagReserved: ", plane.alignmentX);
    FltDump::line(os, "gridSize: ", plane.gridSize);
    FltDump::line(os, "gridVisibilityMask: ", plane.gridVisibilityMask);
    return os;
}
