#include "records/FltRecordHeader.h"

#include "records/FltRecordDefinition.h"

template class FltRecordOf<FltRecordHeader, PrimaryFltRecord>;
