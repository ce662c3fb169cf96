#include "records/FltRecordEyePointTrackPlane.h"

#include "records/FltFields.h"

#include <algorithm>
#include <cmath>
#include <limits>

std::int32_t FltRecordEyePointTrackPlane::FltTrackPlaneStruct::getWholeGridAngle() const
{
    using Limits = std::numeric_limits<std::int32_t>;
    if (std::isnan(gridAngle))
        return 0;
    return static_cast<std::int32_t>(std::clamp<double>(gridAngle, Limits::min(), Limits::max()));
}

std::ostream& FltRecordEyePointTrackPlane::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n EYEPOINT TRACKPLANE RECORD ");
}

void FltRecordEyePointTrackPlane::getPropertiesFromData(char* data)
{
    FltFieldDecoder decoder(data + 4);
    decoder("reserved", reserved);
    for (FltEyePointStruct& eye : eyePoint)
        getEyePointPropertiesFromData(&eye, decoder.place());
    for (FltTrackPlaneStruct& plane : trackPlane)
        getTrackPlanePropertiesFromData(&plane, decoder.place());
}

void FltRecordEyePointTrackPlane::getEyePointPropertiesFromData(FltEyePointStruct* eye, char* data)
{
    FltFieldDecoder decoder(data);
    FltEyePointStruct::fields(*eye, decoder);
}

void FltRecordEyePointTrackPlane::getTrackPlanePropertiesFromData(FltTrackPlaneStruct* plane, char* data)
{
    FltFieldDecoder decoder(data);
    FltTrackPlaneStruct::fields(*plane, decoder);
}

std::ostream& FltRecordEyePointTrackPlane::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    int index = 0;
    for (FltEyePointStruct const& eye : eyePoint) {
        (FltDump(os) << "eyePoint[" << index++ << "]: *****").endLine();
        eyePointProperties(eye, os);
    }
    index = 0;
    for (FltTrackPlaneStruct const& plane : trackPlane) {
        (FltDump(os) << "trackplane[" << index++ << "]: *****").endLine();
        trackPlaneProperties(plane, os);
    }
    return os;
}

std::ostream& FltRecordEyePointTrackPlane::eyePointProperties(FltEyePointStruct const& eye,
                                                              std::ostream& os) const
{
    FltFieldDump dump(os);
    FltEyePointStruct::fields(eye, dump);
    return os;
}

std::ostream& FltRecordEyePointTrackPlane::trackPlaneProperties(FltTrackPlaneStruct const& plane,
                                                                std::ostream& os) const
{
    FltFieldDump dump(os);
    FltTrackPlaneStruct::fields(plane, dump);
    return os;
}
