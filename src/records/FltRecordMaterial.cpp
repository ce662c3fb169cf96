#include "records/FltRecordMaterial.h"

#include "records/FltRecordDefinition.h"

template class FltRecordOf<FltRecordMaterial, PaletteFltRecord>;
template class FltRecordOf<FltRecordOLDMaterialPalette, PaletteFltRecord>;
