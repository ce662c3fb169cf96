#include "records/FltRecordMesh.h"

#include "records/FltFields.h"

void FltRecordMesh::getPropertiesFromData(char* data)
{
    FltFields::decode(*this, data);
}
