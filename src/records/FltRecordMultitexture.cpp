#include "records/FltRecordMultitexture.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

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

FltRecordUVList::UV readPlainUV(char*& cursor)
{
    FltRecordUVList::UV uv;
    FltUtils::getDouble64ValueThenDecal(&uv.uOfFirstSet, cursor);
    FltUtils::getDouble64ValueThenDecal(&uv.vOfFirstSet, cursor);
    uv.uOfSecondSet = uv.uOfFirstSet;
    uv.vOfSecondSet = uv.vOfFirstSet;
    return uv;
}

FltRecordUVList::UV readMorphUV(char*& cursor)
{
    FltRecordUVList::UV uv;
    FltUtils::getDouble64ValueThenDecal(&uv.uOfFirstSet, cursor);
    FltUtils::getDouble64ValueThenDecal(&uv.vOfFirstSet, cursor);
    FltUtils::getDouble64ValueThenDecal(&uv.uOfSecondSet, cursor);
    FltUtils::getDouble64ValueThenDecal(&uv.vOfSecondSet, cursor);
    return uv;
}

} // namespace

std::ostream& FltRecordMultitexture::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n MULTI TEXTURE RECORD ");
}

bool FltRecordMultitexture::hasLayerN(int n) const
{
    return hasLayer(attributeMask, n);
}

void FltRecordMultitexture::getPropertiesFromData(char* data)
{
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&attributeMask, cursor);
    for (int n = 0; n < layerCount; ++n) {
        if (!hasLayerN(n))
            continue;
        FltUtils::getUInt16ValueThenDecal(&layers[n].texture, cursor);
        FltUtils::getUInt16ValueThenDecal(&layers[n].effect, cursor);
        FltUtils::getUInt16ValueThenDecal(&layers[n].mapping, cursor);
        FltUtils::getUInt16ValueThenDecal(&layers[n].data, cursor);
    }
}

std::ostream& FltRecordMultitexture::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::pointer(os, "attributeMask: ", attributeMask);
    for (int n = 0; n < layerCount; ++n) {
        if (!hasLayerN(n))
            continue;
        FltDump::line(os, "layer[", n, "]: ");
        FltDump::line(os, "  texture: ", layers[n].texture);
        FltDump::line(os, "   effect: ", layers[n].effect);
        FltDump::line(os, "  mapping: ", layers[n].mapping);
        FltDump::line(os, "     data: ", layers[n].data);
    }
    return os;
}

std::ostream& FltRecordUVList::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n UV LIST RECORD ");
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
    if (length < headSize)
        return;
    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&attributeMask, cursor);
    int const layers = countLayers(attributeMask);
    if (layers == 0)
        return;
    int const vertices = static_cast<int>((length - headSize) / countedSize(vertexType)) / layers;
    for (int vertex = 0; vertex < vertices; ++vertex) {
        std::map<int, UV>& uvs =
            setOfUVs.insert_or_assign(setOfUVs.end(), vertex, std::map<int, UV>())->second;
        for (int layer = 0; layer < layerCount; ++layer)
            if (hasLayerN(layer))
                uvs.emplace_hint(uvs.end(), layer,
                                 vertexType == morphVertices ? readMorphUV(cursor) : readPlainUV(cursor));
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
    nameOpcodeAndLength(os);
    FltDump::pointer(os, "attributeMask: ", attributeMask);
    for (int n = 0; n < layerCount; ++n) {
        if (!hasLayerN(n))
            continue;
        FltDump::line(os, "", n, " ");
        FltDump::line(os, "  : ", n);
        FltDump::line(os, "  : ", n);
    }
    return os;
}
