#include "records/FltRecordExternalReference.h"

#include "records/FltRecordDefinition.h"

template class FltRecordOf<FltRecordExternalReference, PrimaryFltRecord>;
