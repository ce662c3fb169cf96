#include "records/FltRecordLOD.h"

#include "records/FltRecordDefinition.h"

template class FltRecordOf<FltRecordLOD, PrimaryFltRecord>;
template class FltRecordOf<FltRecordOLDLOD, PrimaryFltRecord>;
