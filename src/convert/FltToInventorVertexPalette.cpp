#include "convert/FltToInventorState.h"
#include "records/FltRecordVertex.h"

void FltToInventor::visitVertexColor(FltRecordVertexColor const* record)
{
    state->vertices.add(FltVertexPalette::color, *record, nullptr, nullptr);
}

void FltToInventor::visitVertexColorNormal(FltRecordVertexColorNormal const* record)
{
    state->vertices.add(FltVertexPalette::colorNormal, *record, record->vertexNormal, nullptr);
}

void FltToInventor::visitVertexColorUV(FltRecordVertexColorUv const* record)
{
    state->vertices.add(FltVertexPalette::colorUV, *record, nullptr, record->texture);
}

void FltToInventor::visitVertexColorNormalUV(FltRecordVertexColorNormalUv const* record)
{
    state->vertices.add(FltVertexPalette::colorNormalUV, *record, record->vertexNormal, record->texture);
}

int FltToInventor::getIndexVertexFromOffset(unsigned long offset)
{
    return state->vertices.entryAt(offset).index;
}

int FltToInventor::getSizeVertexFromOffset(unsigned long offset)
{
    return state->vertices.entryAt(offset).size;
}

SoVertexProperty* FltToInventor::getSoVertexPropertyFromOffset(unsigned long offset)
{
    return state->vertices.entryAt(offset).property;
}

SoVertexProperty* FltToInventor::getVertexPropertyFromIntId(int const& id) const
{
    return state->vertices.getProperty(id);
}

int FltToInventor::getIntIdFromVertexProperty(SoVertexProperty const* property) const
{
    return state->vertices.getId(property);
}

void FltToInventor::copyVertexToVertexColorNormalUV(int sourceId, int sourceIndex, SbVec3f normal,
                                                    int& resultIndex)
{
    resultIndex = state->vertices.addCopy(sourceId, sourceIndex, normal);
}

void FltToInventor::showOffsetToVertexEntryMap(int limit) const
{
    state->vertices.show(limit);
}

FltFaceResources const& FltToInventor::getFaceResources() const
{
    return state->faceResources;
}
