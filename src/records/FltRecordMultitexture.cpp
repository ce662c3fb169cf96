#include "records/FltRecordMultitexture.h"

#include "records/FltFields.h"
#include "records/FltRecordDefinition.h"

#include <bitset>

namespace
{

constexpr int layerCount = FltRecordMultitexture::layerCount;
constexpr unsigned int headSize = 8;

bool hasLayer(std::int32_t attributeMask, int n)
{
    return (static_cast<std::uint32_t>(attributeMask) >> (n & 31) & 1) != 0;
}

int countLayers(std::int32_t attributeMask)
{
    return static_cast<int>(std::bitset<layerCount>(static_cast<std::uint32_t>(attributeMask)).count());
}

/// The size with which the vertices of a list are counted: half of an entry's.
unsigned int countedSize(FltRecordUVList::VertexType type)
{
    return type == FltRecordUVList::morphVertices ? 16 : 8;
}

FltRecordUVList::UV readUV(FltRecordUVList::VertexType type, FltFieldDecoder& decoder)
{
    FltRecordUVList::UV uv;
    decoder("uOfFirstSet", uv.uOfFirstSet);
    decoder("vOfFirstSet", uv.vOfFirstSet);
    uv.uOfSecondSet = uv.uOfFirstSet;
    uv.vOfSecondSet = uv.vOfFirstSet;
    if (type == FltRecordUVList::morphVertices) {
        decoder("uOfSecondSet", uv.uOfSecondSet);
        decoder("vOfSecondSet", uv.vOfSecondSet);
    }
    return uv;
}

} // namespace

bool FltRecordMultitexture::hasLayerN(int n) const
{
    return hasLayer(attributeMask, n);
}

std::ostream& FltRecordUVList::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, title);
}

std::size_t FltRecordUVList::reach(unsigned int length)
{
    return length < headSize ? length : headSize + 2 * (std::size_t(length) - headSize);
}

bool FltRecordUVList::hasLayerN(int n) const
{
    return hasLayer(attributeMask, n);
}

void FltRecordUVList::getPropertiesFromData(char* data)
{
    if (length >= headSize)
        FltFields::decode(*this, data);
}

void FltRecordUVList::getUVsFromData(FltFieldDecoder& decoder)
{
    int const layers = countLayers(attributeMask);
    if (layers == 0)
        return;
    int const vertices = static_cast<int>((length - headSize) / countedSize(vertexType)) / layers;
    for (int vertex = 0; vertex < vertices; ++vertex) {
        std::map<int, UV>& uvs =
            setOfUVs.insert_or_assign(setOfUVs.end(), vertex, std::map<int, UV>())->second;
        for (int layer = 0; layer < layerCount; ++layer)
            if (hasLayerN(layer))
                uvs.emplace_hint(uvs.end(), layer, readUV(vertexType, decoder));
    }
}

bool FltRecordUVList::getUV(int vertex, int layer, double& u, double& v)
{
    if (!hasLayerN(layer) || vertexType != plainVertices)
        return false;
    UV const& uv = setOfUVs[vertex][layer];
    u = uv.uOfSecondSet;
    v = uv.vOfSecondSet;
    return true;
}

bool FltRecordUVList::getMorphUV(int vertex, int layer, double& first, double& second, double& third,
                                 double& fourth)
{
    if (!hasLayerN(layer) || vertexType != morphVertices)
        return false;
    UV const& uv = setOfUVs[vertex][layer];
    first = uv.uOfFirstSet;
    second = uv.vOfFirstSet;
    third = uv.uOfSecondSet;
    fourth = uv.vOfSecondSet;
    return true;
}

std::ostream& FltRecordUVList::properties(std::ostream& os) const
{
    return FltFields::dump(*this, os);
}

/// The number of the layer in all three places, and no coordinates.
void FltRecordUVList::dumpLayers(FltDump& dump) const
{
    for (int n = 0; n < layerCount; ++n) {
        if (!hasLayerN(n))
            continue;
        (dump << n << " ").endLine();
        dump.line("  : ", n);
        dump.line("  : ", n);
    }
}

template class FltRecordOf<FltRecordMultitexture, AncillaryFltRecord>;
