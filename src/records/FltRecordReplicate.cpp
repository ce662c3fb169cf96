#include "records/FltRecordReplicate.h"

#include "records/FltRecordDefinition.h"

template class FltRecordOf<FltRecordReplicate, AncillaryFltRecord>;
