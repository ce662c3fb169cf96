#include "records/FltRecordLineStyle.h"

#include "records/FltRecordDefinition.h"

template class FltRecordOf<FltRecordLineStylePalette, PaletteFltRecord>;
