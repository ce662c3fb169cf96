#include "records/FltRecordLongID.h"

#include "records/FltRecordDefinition.h"

template class FltRecordOf<FltRecordLongID, AncillaryFltRecord>;
