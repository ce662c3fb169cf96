#include "records/FltRecordText.h"

#include "records/FltRecordDefinition.h"

template class FltRecordOf<FltRecordText, PrimaryFltRecord>;
