#include "records/FltRecordTextureMapping.h"

#include "records/FltFields.h"

namespace
{

template <class Block, class... Arguments>
void decodeBlock(Block& block, char* data, Arguments... arguments)
{
    FltFieldDecoder decoder(data);
    Block::fields(block, decoder, arguments...);
}

template <std::size_t size, class Block, class... Arguments>
std::ostream& dumpBlock(char const (&title)[size], std::unique_ptr<Block> const& block, std::ostream& os,
                        Arguments... arguments)
{
    FltFieldDump dump(os);
    dump.show(title);
    if (block != nullptr)
        Block::fields(*block, dump, arguments...);
    return os;
}

void linePoint(FltDump& dump, char const* label, double x, double y)
{
    double const point[] = {x, y};
    dump.list(label, point, 2, ",", ")");
}

} // namespace

/// The cells as they are stored, which aren't the pairs of the file.
void FltWarpedTextureMappingStruct::dumpPoints(FltDump& dump) const
{
    for (int i = 0; i < pointCount; ++i)
        linePoint(dump, "  fromPoint : (", fromPoint()[i], fromPoint()[pointCount + i]);
    for (int i = 0; i < pointCount; ++i)
        linePoint(dump, "  toPoint : (", toPoint()[i], toPoint()[pointCount + i]);
}

std::ostream& FltRecordTextureMappingPalette::nameOpcodeAndLength(std::ostream& os) const
{
    return titleOpcodeAndLength(os, "\n TEXTURE MAPPING PALETTE RECORD ");
}

void FltRecordTextureMappingPalette::getPropertiesFromData(char* data)
{
    putTM.reset();
    pointPutTM.reset();
    sphericalTM.reset();
    radialTM.reset();
    warpedTM.reset();

    FltFieldDecoder decoder(data + 4);
    headFields(*this, decoder);
    char* const block = decoder.place();
    switch (type) {
    case put:
        putTM = std::make_unique<FltPutTextureMappingStruct>();
        getPropertiesPutTMFromData(*putTM, block);
        break;
    case pointPut:
        pointPutTM = std::make_unique<FltPointPutTextureMappingStruct>();
        getPropertiesPointPutTMFromData(*pointPutTM, block);
        break;
    case spherical:
        sphericalTM = std::make_unique<FltSphericalTextureMappingStruct>();
        getPropertiesSphericalTMFromData(*sphericalTM, block);
        break;
    case radial:
        radialTM = std::make_unique<FltRadialTextureMappingStruct>();
        getPropertiesRadialTMFromData(*radialTM, block);
        break;
    default:
        break;
    }
    if (warpedFlag != 0) {
        warpedTM = std::make_unique<FltWarpedTextureMappingStruct>();
        getPropertiesWarpedTMFromData(*warpedTM, block);
    }
}

void FltRecordTextureMappingPalette::getPropertiesPutTMFromData(FltPutTextureMappingStruct& block, char* data)
{
    decodeBlock(block, data);
}

void FltRecordTextureMappingPalette::getPropertiesPointPutTMFromData(FltPointPutTextureMappingStruct& block,
                                                                     char* data)
{
    decodeBlock(block, data, getLength() > lengthWithoutLastWords);
}

void FltRecordTextureMappingPalette::getPropertiesSphericalTMFromData(FltSphericalTextureMappingStruct& block,
                                                                      char* data)
{
    decodeBlock(block, data);
}

void FltRecordTextureMappingPalette::getPropertiesRadialTMFromData(FltRadialTextureMappingStruct& block,
                                                                   char* data)
{
    decodeBlock(block, data);
}

void FltRecordTextureMappingPalette::getPropertiesWarpedTMFromData(FltWarpedTextureMappingStruct& block,
                                                                   char* data)
{
    decodeBlock(block, data);
}

std::ostream& FltRecordTextureMappingPalette::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    {
        FltFieldDump dump(os);
        headFields(*this, dump);
    }
    switch (type) {
    case put:
        putTMproperties(os);
        break;
    case pointPut:
        pointPutTMproperties(os);
        break;
    case spherical:
        sphericalTMproperties(os);
        break;
    case radial:
        radialTMproperties(os);
        break;
    default:
        break;
    }
    if (warpedFlag != 0)
        warpedTMproperties(os);
    return os;
}

std::ostream& FltRecordTextureMappingPalette::putTMproperties(std::ostream& os) const
{
    return dumpBlock("Put Texture Mapping : ", putTM, os);
}

std::ostream& FltRecordTextureMappingPalette::pointPutTMproperties(std::ostream& os) const
{
    return dumpBlock("Point Put Texture Mapping : ", pointPutTM, os, getLength() > lengthWithoutLastWords);
}

std::ostream& FltRecordTextureMappingPalette::sphericalTMproperties(std::ostream& os) const
{
    return dumpBlock("Spherical Texture Mapping : ", sphericalTM, os);
}

std::ostream& FltRecordTextureMappingPalette::radialTMproperties(std::ostream& os) const
{
    return dumpBlock("Radial Texture Mapping : ", radialTM, os);
}

std::ostream& FltRecordTextureMappingPalette::warpedTMproperties(std::ostream& os) const
{
    return dumpBlock("Warped Texture Mapping : ", warpedTM, os);
}
