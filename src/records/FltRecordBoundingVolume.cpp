#include "records/FltRecordBoundingVolume.h"

#include "records/FltFields.h"

std::ostream& FltRecordOldBoundingBox::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n OLD BOUNDING BOX ");
}

void FltRecordOldBoundingBox::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordOldBoundingBox::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordBoundingBox::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n BOUNDING BOX ");
}

void FltRecordBoundingBox::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordBoundingBox::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordBoundingVolumeSphere::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n BOUNDING VOLUME SPHERE ");
}

void FltRecordBoundingVolumeSphere::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordBoundingVolumeSphere::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordBoundingVolumeCylinder::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n BOUNDING VOLUME CYLINDER ");
}

void FltRecordBoundingVolumeCylinder::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordBoundingVolumeCylinder::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordBoundingVolumeCenter::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n BOUNDING VOLUME CENTER ");
}

void FltRecordBoundingVolumeCenter::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordBoundingVolumeCenter::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordBoundingVolumeOrientation::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n BOUNDING VOLUME ORIENTATION ");
}

void FltRecordBoundingVolumeOrientation::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordBoundingVolumeOrientation::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}
