#include "records/FltRecordBoundingVolume.h"

#include "records/FltRecordDefinition.h"

template class FltRecordOf<FltRecordOldBoundingBox, AncillaryFltRecord>;
template class FltRecordOf<FltRecordBoundingBox, AncillaryFltRecord>;
template class FltRecordOf<FltRecordBoundingVolumeSphere, AncillaryFltRecord>;
template class FltRecordOf<FltRecordBoundingVolumeCylinder, AncillaryFltRecord>;
template class FltRecordOf<FltRecordBoundingVolumeCenter, AncillaryFltRecord>;
template class FltRecordOf<FltRecordBoundingVolumeOrientation, AncillaryFltRecord>;
