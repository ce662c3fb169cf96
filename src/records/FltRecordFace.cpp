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
    return titleOpcodeAndLength(os, "\n VERTEX LIST RECORD ");
}

void FltRecordVertexList::getPropertiesFromData(char* data)
{
    std::size_t const before = vertexOffsets.size();
    std::size_t const count = entryCount(getLength());
    vertexOffsets.resize(before + count);
    FltFieldDecoder(data + 4).values("vertexOffsets", vertexOffsets.data() + before, static_cast<int>(count));
}

std::ostream& FltRecordVertexList::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump dump(os);
    dump << "Offset: ";
    for (int offset : vertexOffsets)
        dump << offset << "  ";
    dump.endLine();
    return os;
}

std::size_t FltRecordMorphVertexList::getReach(unsigned int length)
{
    std::size_t const count = entryCount(length);
    return 4 + count + 4 * count;
}

std::ostream& FltRecordMorphVertexList::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n MORPH VERTEX LIST RECORD ");
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
    nameOpcodeAndLength(os);
    FltDump dump(os);
    dump << "Offset: ";
    for (auto const& [first, second] : vertexOffsets)
        dump << "(" << first << "," << second << ")  ";
    dump.endLine();
    return os;
}

template class FltRecordOf<FltRecordFace, PrimaryFltRecord>;
