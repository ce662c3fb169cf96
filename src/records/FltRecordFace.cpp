#include "records/FltRecordFace.h"

#include "records/FltFields.h"
#include "records/FltRecordDefinition.h"

#include <algorithm>

namespace
{

/// Whole 32-bit entries in a list record.
std::size_t entryCount(unsigned int length)
{
    return (std::max(length, 4U) - 4) >> 2;
}

} // namespace

std::ostream& FltRecordVertexList::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, title);
}

void FltRecordVertexList::getPropertiesFromData(char* data)
{
    std::size_t const count = entryCount(getLength());
    char* cursor = data + 4;
    vertexOffsets.reserve(vertexOffsets.size() + count);
    for (std::size_t i = 0; i < count; ++i) {
        int offset;
        FltUtils::getInt32ValueThenDecal(&offset, cursor);
        vertexOffsets.push_back(offset);
    }
}

std::ostream& FltRecordVertexList::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

void FltRecordVertexList::dumpOffsets(FltDump& dump) const
{
    dump << "Offset: ";
    for (int offset : vertexOffsets)
        dump << offset << "  ";
    dump.endLine();
}

std::size_t FltRecordMorphVertexList::getReach(unsigned int length)
{
    std::size_t const count = entryCount(length);
    return 4 + count + 4 * count;
}

std::ostream& FltRecordMorphVertexList::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, title);
}

void FltRecordMorphVertexList::getPropertiesFromData(char* data)
{
    std::size_t const count = entryCount(getLength());
    char* first = data + 4;
    char* second = first + count; // count bytes, not entries
    vertexOffsets.reserve(vertexOffsets.size() + count);
    for (std::size_t i = 0; i < count; ++i) {
        std::pair<int, int> entry;
        FltUtils::getInt32ValueThenDecal(&entry.first, first);
        FltUtils::getInt32ValueThenDecal(&entry.second, second);
        vertexOffsets.push_back(entry);
    }
}

std::ostream& FltRecordMorphVertexList::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

void FltRecordMorphVertexList::dumpOffsets(FltDump& dump) const
{
    dump << "Offset: ";
    for (auto const& [first, second] : vertexOffsets)
        dump << "(" << first << "," << second << ")  ";
    dump.endLine();
}

template class FltRecordOf<FltRecordFace, PrimaryFltRecord>;
