#include "records/FltRecordExtensionAttribute.h"

#include "records/FltRecordDefinition.h"

#include <algorithm>

template class FltRecordOf<FltRecordExtensionAttribute, AncillaryFltRecord>;
