#include "convert/FltObjectToSoSeparator.h"

#include "convert/FltAllowance.h"
#include "convert/FltFaceResources.h"
#include "convert/FltToInventor.h"
#include "messages/FltWarningMessageConsole.h"
#include "records/FltOpcode.h"
#include "records/FltRecordCast.h"
#include "records/FltRecordFace.h"
#include "records/FltRecordVertex.h"
#include "toolkit/LargePages.h"

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <algorithm>

namespace
{

constexpr int colorUVPropertyId = FltVertexPalette::idOf(FltVertexPalette::colorUV);
constexpr int colorNormalUVPropertyId = FltVertexPalette::idOf(FltVertexPalette::colorNormalUV);

void closePolygon(std::vector<int>& indices)
{
    if (!indices.empty() && indices.back() != -1)
        indices.push_back(-1);
}

} // namespace

FltObjectToSoSeparator::FltObjectToSoSeparator() = default;

void FltObjectToSoSeparator::setCurrentIterator(RecordIterator& iterator)
{
    currentIterator = iterator;
    iteratorIsSet = true;
}

void FltObjectToSoSeparator::setCurrentFltObjectTransparency(float const& transparency)
{
    currentFltObjectTransparency = transparency;
}

void FltObjectToSoSeparator::setDestination(SoGroup*& group)
{
    destination = group;
}

void FltObjectToSoSeparator::setFltToInventor(FltToInventor* converter)
{
    resources = converter != nullptr ? &converter->getFaceResources() : nullptr;
}

void FltObjectToSoSeparator::buildFinalSoSeparator()
{
    if (!iteratorIsSet || resources == nullptr || destination == nullptr) {
        FltWarningMessageConsole::notifyMessage(
            "ERROR! In class FltObjectToSoSeparator: Try to build A SoSeparator from a FLT object\n but some "
            "fields aren't correctly initialized",
            3, true);
        return;
    }
    auto* const binding = new SoMaterialBinding;
    binding->value = SoMaterialBinding::PER_FACE_INDEXED;
    destination->addChild(binding);
    traverseObjectPrimaryRecords();
    isBuilt = true;
}

void FltObjectToSoSeparator::visitAllFaces()
{
    std::vector<FltRecord*> records;
    getAllRecordsFromFltObject(currentIterator, records);
    records.push_back(nullptr);
    int subFaceLevel = 0;
    for (RecordIterator iterator = records.begin(); *iterator != nullptr;) {
        switch ((*iterator)->getOpcode()) {
        case FltOpcode::pushSubface:
            ++subFaceLevel;
            break;
        case FltOpcode::popSubface:
            --subFaceLevel;
            break;
        case FltOpcode::face:
            visitFace(recordCast<FltRecordFace>(*iterator), iterator, subFaceLevel);
            break;
        default:
            break;
        }
        if (*iterator != nullptr)
            ++iterator;
    }
    finishProperty(oldVertex);
}

void FltObjectToSoSeparator::getAllRecordsFromFltObject(RecordIterator& iterator,
                                                        std::vector<FltRecord*>& records)
{
    RecordIterator const begin = iterator;
    bool isClosed = false;
    for (int depth = 0; *iterator != nullptr; ++iterator) {
        int const opcode = (*iterator)->getOpcode();
        if (opcode > FltOpcode::lastOfObject)
            break;
        if (opcode == FltOpcode::pushLevel)
            ++depth;
        else if (opcode == FltOpcode::popLevel && --depth <= 0) {
            isClosed = depth == 0;
            break;
        }
    }
    RecordIterator const end = isClosed ? iterator + 1 : iterator;
    LargePages::makeRoom(records, static_cast<std::size_t>(end - begin) + 1); // and one that ends them
    records.insert(records.end(), begin, end);
}

void FltObjectToSoSeparator::visitFace(FltRecordFace const* face, RecordIterator& iterator, int subFaceLevel)
{
    if (face == nullptr)
        return;
    faceIndices.clear();
    int id = FltVertexPalette::undefinedPropertyId;
    visitAllVertexList(iterator, faceIndices, id);
    if (faceIndices.empty())
        return;
    if (id >= 1 && id <= formCount) {
        // A face that several lists make may name vertices of one form in the property of another, beyond its
        // last one. The properties get room for them when the conversion ends.
        resources->vertices.noteIndex(id, *std::max_element(faceIndices.begin(), faceIndices.end()));
        addFaceToVector(face, faceIndices, batchOf(id, subFaceLevel));
    }
    closePolygon(oldVertexColorNormal.indices);
    if (oldVertex.indices.empty())
        return;
    closePolygon(oldVertex.indices);
    addOldVertexFaceSet(*face);
}

FltObjectToSoSeparator::Batch& FltObjectToSoSeparator::batchOf(int id, int subFaceLevel)
{
    return batches[id - 1 + (subFaceLevel != 0 ? formCount : 0)];
}

/// The list is never emptied: each further face that comes here adds a face set with all of it.
void FltObjectToSoSeparator::addOldVertexFaceSet(FltRecordFace const& face)
{
    FltAllowance& allowance = resources->oldVertexIndices;
    if (destination == nullptr || allowance.isExceeded())
        return;
    if (!allowance.spend(static_cast<std::int64_t>(oldVertex.indices.size()))) {
        FltWarningMessageConsole::notifyMessage(
            "WARNING ! The faces of obsolete vertices repeat too many vertices: further ones are left out", 2,
            true);
        return;
    }
    SoIndexedFaceSet* const faceSet = makeOldVertexFaceSet("OLD_VERTEX", oldVertex);
    if (face.texturePatternIndex == -1) {
        destination->addChild(faceSet);
        return;
    }
    auto* const separator = new SoSeparator;
    addTexture(*separator, face.texturePatternIndex);
    separator->addChild(faceSet);
    destination->addChild(separator);
}

void FltObjectToSoSeparator::addFaceToVector(FltRecordFace const* face, std::vector<int> const& faceIndices,
                                             Batch& batch)
{
    LargePages::makeRoom(batch.indices, faceIndices.size() + 1);
    batch.indices.insert(batch.indices.end(), faceIndices.begin(), faceIndices.end());
    batch.indices.push_back(-1);
    LargePages::add(batch.textureIndices, face->texturePatternIndex);
    ++batch.faceCounter;
    if (std::optional<FltMaterialFields> const fields = materialOf(*face))
        batch.materialSlots.set(batch.faceCounter, *fields);
    LargePages::add(batch.materialIndices, batch.faceCounter);
}

void FltObjectToSoSeparator::visitAllVertexList(RecordIterator& iterator, std::vector<int>& indices, int& id)
{
    faceRecords.clear();
    getFirstFaceFromIterator(iterator, faceRecords);
    int faceCount = 0;
    for (FltRecord* record : faceRecords) {
        switch (record->getOpcode()) {
        case FltOpcode::face:
            ++faceCount;
            break;
        case FltOpcode::vertexList:
            visitVertexList(recordCast<FltRecordVertexList>(record), indices, id);
            break;
        case FltOpcode::morphVertexList:
            visitMorphVertexList(recordCast<FltRecordMorphVertexList>(record), indices, id);
            break;
        case FltOpcode::oldVertex: {
            auto const* vertex = recordCast<FltRecordOldVertex>(record);
            addOldVertexToSoVertexProperty(vertex);
            break;
        }
        case FltOpcode::oldVertexColor: {
            auto const* vertex = recordCast<FltRecordOldVertexColor>(record);
            addOldVertexColorToSoVertexProperty(vertex);
            break;
        }
        case FltOpcode::oldVertexColorNormal: {
            auto const* vertex = recordCast<FltRecordOldVertexColorNormal>(record);
            addOldVertexColorNormalToSoVertexProperty(vertex);
            break;
        }
        default:
            break;
        }
        if (faceCount == 2)
            return;
    }
}

void FltObjectToSoSeparator::getFirstFaceFromIterator(RecordIterator& iterator,
                                                      std::vector<FltRecord*>& records)
{
    RecordIterator const begin = iterator;
    auto const stepBack = [&] {
        if (iterator != begin)
            --iterator;
    };
    bool faceFound = false;
    for (int depth = 0; *iterator != nullptr; ++iterator) {
        int const opcode = (*iterator)->getOpcode();
        if (opcode > FltOpcode::lastOfObject)
            return;
        switch (opcode) {
        case FltOpcode::face:
            if (faceFound)
                return stepBack();
            faceFound = true;
            break;
        case FltOpcode::pushLevel:
            ++depth;
            break;
        case FltOpcode::popLevel:
            --depth;
            break;
        case FltOpcode::pushSubface:
        case FltOpcode::popSubface:
            return stepBack();
        default:
            break;
        }
        records.push_back(*iterator);
        if (depth == 0 && opcode == FltOpcode::popLevel)
            return;
    }
}

void FltObjectToSoSeparator::visitVertexList(FltRecordVertexList const* list, std::vector<int>& indices,
                                             int& id)
{
    if (list == nullptr || list->vertexOffsets.empty())
        return;
    std::size_t const begin = indices.size();
    vertexIds.clear();
    for (int const offset : list->vertexOffsets) {
        FltVertexOffsets::Entry const entry = resources->vertices.placeAt(FltVertexPalette::offsetOf(offset));
        int const vertexId = entry.id != 0 ? entry.id : resources->vertices.getId(nullptr);
        vertexIds.push_back(vertexId);
        indices.push_back(entry.index);
    }
    auto const isFirst = [this](int vertexId) { return vertexId == vertexIds.front(); };
    auto const hasUV = [](int vertexId) {
        return vertexId == colorUVPropertyId || vertexId == colorNormalUVPropertyId;
    };
    if (std::all_of(vertexIds.begin(), vertexIds.end(), isFirst)) {
        id = vertexIds.front();
    } else if (std::all_of(vertexIds.begin(), vertexIds.end(), hasUV)) {
        id = colorNormalUVPropertyId;
        if (resources->vertices.hasNodes())
            promoteToColorNormalUV(indices, begin);
    } else {
        FltWarningMessageConsole::notifyMessage("WARNING ! Remove a face having heterogeneous vertices", 1,
                                                true);
        indices.resize(begin);
    }
}

/// Gives the vertices without normal, from @p begin on, the average normal of those with one.
void FltObjectToSoSeparator::promoteToColorNormalUV(std::vector<int>& indices, std::size_t begin)
{
    SoVertexProperty const& property = *resources->vertices.getProperty(colorNormalUVPropertyId);
    SbVec3f average(0, 0, 0);
    float count = 0;
    for (std::size_t i = 0; i < vertexIds.size(); ++i) {
        int const index = indices[begin + i];
        if (vertexIds[i] != colorNormalUVPropertyId)
            continue;
        if (index < property.normal.getNum())
            average += property.normal[index];
        ++count;
    }
    average.setValue(average[0] / count, average[1] / count, average[2] / count);
    for (std::size_t i = 0; i < vertexIds.size(); ++i)
        if (vertexIds[i] != colorNormalUVPropertyId) {
            int& index = indices[begin + i];
            index = resources->vertices.addCopy(vertexIds[i], index, average);
        }
}

void FltObjectToSoSeparator::visitMorphVertexList(FltRecordMorphVertexList const* list,
                                                  std::vector<int>& indices, int& id)
{
    if (list == nullptr || list->vertexOffsets.empty())
        return;
    auto const placeOf = [this](std::pair<int, int> const& offsets) {
        return resources->vertices.placeAt(FltVertexPalette::offsetOf(offsets.second));
    };
    int const firstId = placeOf(list->vertexOffsets.front()).id;
    id = firstId != 0 ? firstId : resources->vertices.getId(nullptr);
    for (std::pair<int, int> const& offsets : list->vertexOffsets)
        indices.push_back(placeOf(offsets).index);
}

void FltObjectToSoSeparator::addOldVertexToSoVertexProperty(FltRecordOldVertex const*& vertex)
{
    if (vertex == nullptr)
        return;
    addOldVertex(oldVertex, *vertex);
    oldVertex.texCoords.emplace_back(vertex->texture[0], vertex->texture[1]);
}

void FltObjectToSoSeparator::addOldVertexColorToSoVertexProperty(FltRecordOldVertexColor const*& vertex)
{
    if (vertex != nullptr)
        addOldVertex(oldVertexColor, *vertex);
}

void FltObjectToSoSeparator::addOldVertexColorNormalToSoVertexProperty(
    FltRecordOldVertexColorNormal const*& vertex)
{
    if (vertex != nullptr)
        addOldVertex(oldVertexColorNormal, *vertex);
}

void FltObjectToSoSeparator::addOldVertex(OldVertexSet& set, AbstractOldVertexRecord const& vertex)
{
    set.indices.push_back(static_cast<int>(set.places.size()));
    set.places.emplace_back(static_cast<float>(vertex.Xcoordinate), static_cast<float>(vertex.Ycoordinate),
                            static_cast<float>(vertex.Zcoordinate));
}

void FltObjectToSoSeparator::addPolygonOffset(float first, float second)
{
    auto* const offset = new SoPolygonOffset;
    offset->factor = first;
    offset->units = second;
    destination->addChild(offset);
}
