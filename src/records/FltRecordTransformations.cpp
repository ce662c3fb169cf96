#include "records/FltRecordTransformations.h"

#include "records/FltFields.h"

void AbstractMatrixRecord::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& AbstractMatrixRecord::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
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
    FltFields::decode(*this, data);
}

std::ostream& FltRecordVector::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordRotateAboutEdge::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n ROTATE ABOUT EDGE RECORD ");
}

void FltRecordRotateAboutEdge::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordRotateAboutEdge::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordTranslate::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n TRANSLATE RECORD ");
}

void FltRecordTranslate::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordTranslate::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordScaleNonUniform::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n SCALE NON UNIFORM RECORD ");
}

void FltRecordScaleNonUniform::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordScaleNonUniform::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordRotateAboutPoint::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n ROTATE ABOUT POINT RECORD ");
}

void FltRecordRotateAboutPoint::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordRotateAboutPoint::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

std::ostream& FltRecordPutTransform::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n PUT TRANSFORM RECORD ");
}

void FltRecordPutTransform::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}

std::ostream& FltRecordPutTransform::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}
