#include "records/FltRecordTexturePattern.h"

#include "records/FltRecordDefinition.h"

template class FltRecordOf<FltRecordTexturePattern, PaletteFltRecord>;
