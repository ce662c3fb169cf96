#include "records/FltRecordTextureMapping.h"

#include "dump/FltDump.h"
#include "records/FltUtils.h"

namespace
{

enum Type { put = 1, pointPut = 2, spherical = 4, radial = 5 };

/// Above this length a record holds the last words of the point put block.
constexpr unsigned int lengthWithoutLastWords = 576;

void linePoint(std::ostream& os, char const* label, double x, double y)
{
    double const point[] = {x, y};
    FltDump::list(os, label, point, 2, ",", ")");
}

} // namespace

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

    char* cursor = data + 4;
    FltUtils::getInt32ValueThenDecal(&reserved, cursor);
    FltUtils::getInt32ValueThenDecal(&index, cursor);
    FltUtils::getBytesThenDecal(name, sizeof name, cursor);
    FltUtils::getInt32ValueThenDecal(&type, cursor);
    FltUtils::getInt32ValueThenDecal(&warpedFlag, cursor);
    FltUtils::getDouble64ValuesThenDecal(transformationMatrix, 16, cursor);
    switch (type) {
    case put:
        putTM = std::make_unique<FltPutTextureMappingStruct>();
        getPropertiesPutTMFromData(*putTM, cursor);
        break;
    case pointPut:
        pointPutTM = std::make_unique<FltPointPutTextureMappingStruct>();
        getPropertiesPointPutTMFromData(*pointPutTM, cursor);
        break;
    case spherical:
        sphericalTM = std::make_unique<FltSphericalTextureMappingStruct>();
        getPropertiesSphericalTMFromData(*sphericalTM, cursor);
        break;
    case radial:
        radialTM = std::make_unique<FltRadialTextureMappingStruct>();
        getPropertiesRadialTMFromData(*radialTM, cursor);
        break;
    default:
        break;
    }
    if (warpedFlag != 0) {
        warpedTM = std::make_unique<FltWarpedTextureMappingStruct>();
        getPropertiesWarpedTMFromData(*warpedTM, cursor);
    }
}

void FltRecordTextureMappingPalette::getPropertiesPutTMFromData(FltPutTextureMappingStruct& block, char* data)
{
    char* cursor = data;
    FltUtils::getInt32ValueThenDecal(&block.toolState, cursor);
    FltUtils::getInt32ValueThenDecal(&block.activeGeometryPoint, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.lowerLeftCorner, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.upperRightCorner, 3, cursor);
    FltUtils::getInt32ValuesThenDecal(block.sizeFlags, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.textureOrigin, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.textureAlignment, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.textureShear, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.geometryOrigin, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.geometryAlignment, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.geometryShear, 3, cursor);
    FltUtils::getInt32ValueThenDecal(&block.activeTexturePoint, cursor);
    FltUtils::getInt32ValueThenDecal(&block.displayType, cursor);
}

void FltRecordTextureMappingPalette::getPropertiesPointPutTMFromData(FltPointPutTextureMappingStruct& block,
                                                                     char* data)
{
    char* cursor = data;
    FltUtils::getInt32ValueThenDecal(&block.toolState, cursor);
    FltUtils::getInt32ValueThenDecal(&block.activeGeometryPoint, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.lowerLeftCorner, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.upperRightCorner, 3, cursor);
    FltUtils::getInt32ValuesThenDecal(block.sizeFlags, 4, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.textureOrigin, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.textureAlignment, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.textureShear, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.texturePerspective, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.geometryOrigin, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.geometryAlignment, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.geometryShear, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.geometryPerspective, 3, cursor);
    FltUtils::getInt32ValueThenDecal(&block.activeTexturePoint, cursor);
    FltUtils::getInt32ValueThenDecal(&block.reserved1, cursor);
    FltUtils::getFloat32ValueThenDecal(&block.depthScale, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.matrix, 16, cursor);
    block.reserved2 = 0;
    block.reserved3 = 0;
    if (getLength() > lengthWithoutLastWords) {
        FltUtils::getInt32ValueThenDecal(&block.reserved2, cursor);
        FltUtils::getInt32ValueThenDecal(&block.reserved3, cursor);
    }
}

void FltRecordTextureMappingPalette::getPropertiesSphericalTMFromData(FltSphericalTextureMappingStruct& block,
                                                                      char* data)
{
    char* cursor = data;
    FltUtils::getFloat32ValueThenDecal(&block.scale, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.center, 3, cursor);
    FltUtils::getFloat32ValueThenDecal(&block.scaleRatio, cursor);
    FltUtils::getFloat32ValueThenDecal(&block.maxDimension, cursor);
}

void FltRecordTextureMappingPalette::getPropertiesRadialTMFromData(FltRadialTextureMappingStruct& block,
                                                                   char* data)
{
    char* cursor = data;
    FltUtils::getInt32ValueThenDecal(&block.activeGeometryPoint, cursor);
    FltUtils::getInt32ValueThenDecal(&block.reserved, cursor);
    FltUtils::getFloat32ValueThenDecal(&block.radialScale, cursor);
    FltUtils::getFloat32ValueThenDecal(&block.lengthScale, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.matrix, 16, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.endPoint1, 3, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.endPoint2, 3, cursor);
}

void FltRecordTextureMappingPalette::getPropertiesWarpedTMFromData(FltWarpedTextureMappingStruct& block,
                                                                   char* data)
{
    char* cursor = data;
    FltUtils::getInt32ValueThenDecal(&block.activeGeometryPoint, cursor);
    FltUtils::getInt32ValueThenDecal(&block.toolState, cursor);
    FltUtils::getDouble64ValuesThenDecal(block.matrix, 16, cursor);
    constexpr int stride = FltWarpedTextureMappingStruct::stride;
    for (int i = 0; i < FltWarpedTextureMappingStruct::pointCount; ++i)
        FltUtils::getDouble64ValuesThenDecal(block.fromPoint() + stride * i, 2, cursor);
    for (int i = 0; i < FltWarpedTextureMappingStruct::pointCount; ++i)
        FltUtils::getDouble64ValuesThenDecal(block.toPoint() + stride * i, 2, cursor);
}

std::ostream& FltRecordTextureMappingPalette::properties(std::ostream& os) const
{
    nameOpcodeAndLength(os);
    FltDump::line(os, " index: ", index);
    FltDump::text(os, " name: ", name, this + 1);
    FltDump::line(os, " type: ", type);
    FltDump::line(os, " warpedFlag: ", warpedFlag);
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
    FltDump::line(os, "Put Texture Mapping : ");
    if (putTM == nullptr)
        return os;
    FltDump::line(os, "  toolState: ", putTM->toolState);
    FltDump::line(os, "  activeGeometryPoint: ", putTM->activeGeometryPoint);
    FltDump::list(os, "  lowerLeftCorner : (", putTM->lowerLeftCorner, 3, ",", ")");
    FltDump::list(os, "  upperRightCorner : (", putTM->upperRightCorner, 3, ",", ")");
    FltDump::list(os, "  sizeFlags : (", putTM->sizeFlags, 3, ",", ")");
    FltDump::list(os, "  textureOrigin : (", putTM->textureOrigin, 3, ",", ")");
    FltDump::list(os, "  textureAlignment : (", putTM->textureAlignment, 3, ",", ")");
    FltDump::list(os, "  textureShear : (", putTM->textureShear, 3, ",", ")");
    FltDump::list(os, "  geometryOrigin : (", putTM->geometryOrigin, 3, ",", ")");
    FltDump::list(os, "  geometryAlignment : (", putTM->geometryAlignment, 3, ",", ")");
    FltDump::list(os, "  geometryShear : (", putTM->geometryShear, 3, ",", ")");
    FltDump::line(os, "  activeTexturePoint : ", putTM->activeTexturePoint);
    FltDump::line(os, "  displayType : ", putTM->displayType);
    return os;
}

std::ostream& FltRecordTextureMappingPalette::pointPutTMproperties(std::ostream& os) const
{
    FltDump::line(os, "Point Put Texture Mapping : ");
    if (pointPutTM == nullptr)
        return os;
    FltDump::line(os, "  toolState: ", pointPutTM->toolState);
    FltDump::line(os, "  activeGeometryPoint: ", pointPutTM->activeGeometryPoint);
    FltDump::list(os, "  lowerLeftCorner : (", pointPutTM->lowerLeftCorner, 3, ",", ")");
    FltDump::list(os, "  upperRightCorner : (", pointPutTM->upperRightCorner, 3, ",", ")");
    FltDump::list(os, "  sizeFlags : (", pointPutTM->sizeFlags, 4, ",", ")");
    FltDump::list(os, "  textureOrigin : (", pointPutTM->textureOrigin, 3, ",", ")");
    FltDump::list(os, "  textureAlignment : (", pointPutTM->textureAlignment, 3, ",", ")");
    FltDump::list(os, "  textureShear : (", pointPutTM->textureShear, 3, ",", ")");
    FltDump::list(os, "  texturePerspective : (", pointPutTM->texturePerspective, 3, ",", ")");
    FltDump::list(os, "  geometryOrigin : (", pointPutTM->geometryOrigin, 3, ",", ")");
    FltDump::list(os, "  geometryAlignment : (", pointPutTM->geometryAlignment, 3, ",", ")");
    FltDump::list(os, "  geometryShear : (", pointPutTM->geometryShear, 3, ",", ")");
    FltDump::list(os, "  geometryPerspective : (", pointPutTM->geometryPerspective, 3, ",", ")");
    FltDump::line(os, "  activeTexturePoint : ", pointPutTM->activeTexturePoint);
    FltDump::line(os, "  depthScale : ", pointPutTM->depthScale);
    FltDump::rows(os, pointPutTM->matrix, 4, 4);
    return os;
}

std::ostream& FltRecordTextureMappingPalette::sphericalTMproperties(std::ostream& os) const
{
    FltDump::line(os, "Spherical Texture Mapping : ");
    if (sphericalTM == nullptr)
        return os;
    FltDump::line(os, "  scale : ", sphericalTM->scale);
    FltDump::list(os, "  center : (", sphericalTM->center, 3, ",", ")");
    FltDump::line(os, "  scaleRatio : ", sphericalTM->scaleRatio);
    FltDump::line(os, "  maxDimension : ", sphericalTM->maxDimension);
    return os;
}

std::ostream& FltRecordTextureMappingPalette::radialTMproperties(std::ostream& os) const
{
    FltDump::line(os, "Radial Texture Mapping : ");
    if (radialTM == nullptr)
        return os;
    FltDump::line(os, "activeGeometryPoint : ", radialTM->activeGeometryPoint);
    FltDump::line(os, "radialScale : ", radialTM->radialScale);
    FltDump::line(os, "lengthScale : ", radialTM->lengthScale);
    FltDump::rows(os, radialTM->matrix, 4, 4);
    FltDump::list(os, "  endPoint1 : (", radialTM->endPoint1, 3, ",", ")");
    FltDump::list(os, "  endPoint2 : (", radialTM->endPoint2, 3, ",", ")");
    return os;
}

std::ostream& FltRecordTextureMappingPalette::warpedTMproperties(std::ostream& os) const
{
    FltDump::line(os, "Warped Texture Mapping : ");
    if (warpedTM == nullptr)
        return os;
    FltDump::line(os, "activeGeometryPoint : ", warpedTM->activeGeometryPoint);
    FltDump::line(os, "toolState : ", warpedTM->toolState);
    FltDump::rows(os, warpedTM->matrix, 4, 4);
    constexpr int count = FltWarpedTextureMappingStruct::pointCount;
    double const* const from = warpedTM->fromPoint();
    for (int i = 0; i < count; ++i)
        linePoint(os, "  fromPoint : (", from[i], from[count + i]);
    double const* const to = warpedTM->toPoint();
    for (int i = 0; i < count; ++i)
        linePoint(os, "  toPoint : (", to[i], to[count + i]);
    return os;
}
