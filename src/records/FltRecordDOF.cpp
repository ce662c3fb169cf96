#include "records/FltRecordDOF.h"

#include "records/FltRecordDefinition.h"

template class FltRecordOf<FltRecordDOF, PrimaryFltRecord>;
