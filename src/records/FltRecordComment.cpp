#include "records/FltRecordComment.h"

#include "records/FltRecordDefinition.h"

template class FltRecordOf<FltRecordComment, AncillaryFltRecord>;
