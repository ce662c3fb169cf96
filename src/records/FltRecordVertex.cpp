#include "records/FltRecordVertex.h"

#include "records/FltFields.h"
#include "records/FltRecordDefinition.h"

// Parts of properties(), which override nothing. NOLINTBEGIN(bugprone-virtual-near-miss)
std::ostream& FltRecordVertexColor::properties1(std::ostream& os) const
{
    FltFieldDump dump(os);
    firstFields(*this, dump);
    return os;
}

std::ostream& FltRecordVertexColor::properties2(std::ostream& os) const
{
    FltFieldDump dump(os);
    colorFields(*this, dump);
    return os;
}
// NOLINTEND(bugprone-virtual-near-miss)

template class FltRecordOf<FltRecordVertexPalette, PaletteFltRecord>;
template class FltRecordOf<FltRecordVertexColor, PaletteFltRecord>;
template class FltRecordOf<FltRecordVertexColorNormal, FltRecordVertexColor>;
template class FltRecordOf<FltRecordVertexColorNormalUv, FltRecordVertexColor>;
template class FltRecordOf<FltRecordVertexColorUv, FltRecordVertexColor>;
template class FltRecordOf<FltRecordOldVertex, AbstractOldVertexRecord>;
template class FltRecordOf<FltRecordOldVertexColor, AbstractOldVertexColorRecord>;
template class FltRecordOf<FltRecordOldVertexColorNormal, AbstractOldVertexColorRecord>;
