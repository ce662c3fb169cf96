#include "records/FltRecordTransformations.h"

#include "records/FltRecordDefinition.h"

template class FltRecordOf<FltRecordMatrix, AbstractMatrixRecord>;
template class FltRecordOf<FltRecordGeneralMatrix, AbstractMatrixRecord>;
template class FltRecordOf<FltRecordVector, AncillaryFltRecord>;
template class FltRecordOf<FltRecordRotateAboutEdge, AncillaryFltRecord>;
template class FltRecordOf<FltRecordTranslate, AncillaryFltRecord>;
template class FltRecordOf<FltRecordScaleNonUniform, AncillaryFltRecord>;
template class FltRecordOf<FltRecordRotateAboutPoint, AncillaryFltRecord>;
template class FltRecordOf<FltRecordPutTransform, AncillaryFltRecord>;
