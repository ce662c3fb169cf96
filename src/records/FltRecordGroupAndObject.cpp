#include "records/FltRecordGroupAndObject.h"

#include "records/FltRecordDefinition.h"

template class FltRecordOf<FltRecordGroup, PrimaryFltRecord>;
template class FltRecordOf<FltRecordObject, PrimaryFltRecord>;
