#include "writer/FltLayouts.h"

namespace
{

using K = FltKind;
using Fields = std::vector<FltField>;

constexpr FltField chars(std::string_view name, int count)
{
    return {name, K::chars, count};
}
constexpr FltField bytes(std::string_view name, int count)
{
    return {name, K::bytes, count};
}
constexpr FltField skip(int count)
{
    return {"", K::bytes, count};
}
constexpr FltField i8(std::string_view name)
{
    return {name, K::i8};
}
constexpr FltField u8(std::string_view name)
{
    return {name, K::u8};
}
constexpr FltField i16(std::string_view name)
{
    return {name, K::i16};
}
constexpr FltField u16(std::string_view name)
{
    return {name, K::u16};
}
constexpr FltField i32(std::string_view name, int count = 1)
{
    return {name, K::i32, count};
}
constexpr FltField u32(std::string_view name, int count = 1)
{
    return {name, K::u32, count};
}
constexpr FltField f32(std::string_view name, int count = 1)
{
    return {name, K::f32, count};
}
constexpr FltField f64(std::string_view name, int count = 1)
{
    return {name, K::f64, count};
}
constexpr int rest = FltField::rest;

Fields operator+(Fields a, Fields const& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

/// Fields of one kind, one after the other.
Fields each(FltField (*make)(std::string_view), std::vector<std::string_view> const& names)
{
    Fields fields;
    for (std::string_view name : names)
        fields.push_back(make(name));
    return fields;
}

Fields doubles(std::vector<std::string_view> const& names)
{
    return each([](std::string_view name) { return f64(name); }, names);
}

Fields floats(std::vector<std::string_view> const& names)
{
    return each([](std::string_view name) { return f32(name); }, names);
}

Fields ints(std::vector<std::string_view> const& names)
{
    return each([](std::string_view name) { return i32(name); }, names);
}

Fields const header = {
    chars("id", 8),
    i32("formatRevisionLevel"),
    i32("editRevisionLevel"),
    chars("lastRevisionDateTime", 32),
    i16("idNextGroup"),
    i16("idNextLOD"),
    i16("idNextObject"),
    i16("idNextFace"),
    i16("multiplierDiviserUnit").is(1),
    u8("vertexCoordinateUnits"),
    u8("textWhite"),
    u32("flags"),
    skip(24),
    i32("projectionType"),
    skip(28),
    i16("idNextDegreeOfFreedom"),
    i16("idVertexStorageType"),
    i32("idDatabaseOrigin"),
    f64("southWestDatabaseCoordinateX"),
    f64("southWestDatabaseCoordinateY"),
    f64("XdeltaToPlaceDatabase"),
    f64("YdeltaToPlaceDatabase"),
    i16("idNextSound").from(1420),
    i16("idNextPath").from(1420),
    skip(8).from(1420),
    i16("idNextClip").from(1420),
    i16("idNextText").from(1420),
    i16("idNextBSP").from(1420),
    i16("idNextSwitch").from(1420),
    skip(4).from(1500),
    f64("southWestCornerLatitude").from(1420),
    f64("southWestCornerLongitude").from(1420),
    f64("northEastCornerLatitude").from(1420),
    f64("northEastCornerLongitude").from(1420),
    f64("originLatitude").from(1420),
    f64("originLongitude").from(1420),
    f64("LambertUpperLatitude").from(1420),
    f64("LambertLowerLatitude").from(1420),
    i16("idNextLightSource").from(1420),
    i16("idNextLightPoint").from(1420),
    i16("idNextRoad").from(1420),
    i16("idNextCat").from(1420),
    skip(8).from(1420),
    i32("earthEllipsoidModel").from(1420),
    i16("idNextAdaptive").from(1540),
    i16("idNextCurve").from(1550),
    skip(2).from(1540).below(1580),
    i16("utmZone").from(1580),
    skip(6).from(1580),
    f64("ZdeltaToPlaceDatabase").from(1570),
    f64("radius").from(1570),
    u16("idNextMesh").from(1570),
    skip(2).from(1570).below(1580),
    i16("idNextLightPointSystem").from(1580),
    skip(4).from(1580),
    f64("earthMajorAxis").from(1580),
    f64("earthMinorAxis").from(1580),
};

Fields const lodTail = {i16("id1specialEffect"), i16("id2specialEffect"), u32("flags")};

Fields const dof = Fields{chars("idASCII", 8), skip(4)} +
                   doubles({"XOriginOfDOFLocalCoordinateSystem",
                            "YOriginOfDOFLocalCoordinateSystem",
                            "ZOriginOfDOFLocalCoordinateSystem",
                            "XPointOnXAxisOfDOFLocalCoordinateSystem",
                            "YPointOnXAxisOfDOFLocalCoordinateSystem",
                            "ZPointOnXAxisOfDOFLocalCoordinateSystem",
                            "XPointInXYPlaneOfDOFLocalCoordinateSystem",
                            "YPointInXYPlaneOfDOFLocalCoordinateSystem",
                            "ZPointInXYPlaneOfDOFLocalCoordinateSystem",
                            "ZMinValue",
                            "ZMaxValue",
                            "ZCurrentValue",
                            "ZIncrement",
                            "YMinValue",
                            "YMaxValue",
                            "YCurrentValue",
                            "YIncrement",
                            "XMinValue",
                            "XMaxValue",
                            "XCurrentValue",
                            "XIncrement",
                            "minimumPitch",
                            "maxPitch",
                            "currentPitch",
                            "incrementInPitch",
                            "minimumRoll",
                            "maxRoll",
                            "currentRoll",
                            "incrementInRoll",
                            "minimumYaw",
                            "maxYaw",
                            "currentYaw",
                            "incrementInYaw",
                            "ZMinScale",
                            "ZMaxScale",
                            "ZCurrentScale",
                            "ZIncrementForScale",
                            "YMinScale",
                            "YMaxScale",
                            "YCurrentScale",
                            "YIncrementForScale",
                            "XMinScale",
                            "XMaxScale",
                            "XCurrentScale",
                            "XIncrementForScale"}) +
                   Fields{u32("flags")};

Fields const face = {
    chars("idField", 8),
    i32("IRColorCode"),
    i16("relativePriority"),
    i8("drawType"),
    i8("textureWhite"),
    u16("colorNameIndex"),
    u16("alternateColorNameIndex"),
    skip(1),
    i8("templateBillboard"),
    i16("detailTexturePatternIndex").is(-1),
    i16("texturePatternIndex").is(-1),
    i16("materialIndex").is(-1),
    i16("surfaceMaterialCode"),
    i16("idFeature"),
    i32("IRMaterialCode"),
    u16("transparency"),
    u8("LODGenerationControl"),
    u8("lineStyleIndex"),
    u32("flags"),
    u8("lightMode"),
    skip(7),
    bytes("packedColor", 4),
    bytes("alternatePackedColor", 4),
    i16("textureMappingIndex").is(-1).from(1500),
    skip(2).from(1500),
    i32("primaryColorIndex").from(1500),
    i32("alternateColorIndex").from(1500),
    skip(4).from(1500),
};

Fields const vertexHead = {u16("colorNameIndex"), u16("flags"), f64("Xcoordinate"), f64("Ycoordinate"),
                           f64("Zcoordinate")};
Fields const vertexColor = {bytes("packedColor", 4), i32("vertexColorIndex").from(1540)};
Fields const vertexReserved = {skip(4).from(1580)};
Fields const oldVertexHead = {i32("Xcoordinate"), i32("Ycoordinate"), i32("Zcoordinate")};
Fields const oldVertexColor = {bytes("hardEdgeFlag", 1), bytes("shadingFlag", 1), u16("colorIndex")};

Fields const lightSourcePalette =
    Fields{i32("paletteIndex"), skip(8), chars("lightSourceName", 20), skip(4)} +
    floats({"ambientRed", "ambientGreen", "ambientBlue", "ambientAlpha", "diffuseRed", "diffuseGreen",
            "diffuseBlue", "diffuseAlpha", "specularRed", "specularGreen", "specularBlue", "specularAlpha"}) +
    Fields{i32("lightType"), skip(10)} +
    floats({"spotExponentialDropoffTerm", "spotCutoffAngle", "yaw", "pitch", "constantAttenuationCoefficient",
            "linearAttenuationCoefficient", "quadraticAttenuationCoefficient"}) +
    Fields{i32("modelingLight"), skip(76)};

Fields const lightPoint =
    Fields{chars("idASCII", 8), i16("surfaceMaterial"), i16("featureID"), bytes("backColor", 4),
           i32("displayMode")} +
    floats({"frontIntensity", "backIntensity", "minDefocus", "maxDefocus"}) +
    ints({"fadeMode", "fogPunchMode", "directionalMode", "rangeMode"}) +
    floats({"minPixelSize", "maxPixelSize", "actualPixelSize", "transpFalloff", "transpFalloffExponent",
            "transpFalloffScalar", "transpFalloffClamp", "fog"}) +
    Fields{skip(4), f32("size"), i32("direction")} +
    floats({"lobeHorizontal", "lobeVertical", "lobeRoll", "falloff", "ambientIntensity", "animPeriod",
            "animPhaseDelay", "animEnabledPeriod", "significance"}) +
    Fields{i32("drawOrder"), u32("flags"), f32("animRotation", 3)};

Fields const text =
    Fields{chars("idASCII", 8), skip(8)} + ints({"textType", "drawType", "justification"}) +
    Fields{f64("floatValue"), i32("intValue"), skip(20), u32("flags")} +
    ints({"color", "color2", "material"}) + Fields{skip(4)} +
    ints({"maxLineNumber", "maxCharNumber", "textLength", "nextLineNumber", "lineNumberAtTopOfDisplay"}) +
    Fields{i32("valuesForInt", 2), f64("valuesForFloat", 2)} +
    doubles({"XlowerLeftCorner", "YlowerLeftCorner", "ZlowerLeftCorner", "XupperRightCorner",
             "YupperRightCorner", "ZupperRightCorner"}) +
    Fields{chars("fontName", 120)} +
    ints({"drawVertical", "drawItalic", "drawBold", "drawUnderline", "lineStyle"}) + Fields{skip(4)};

Fields const textureMappingHead = {skip(4),     i32("index"),      chars("name", 20),
                                   i32("type"), i32("warpedFlag"), f64("transformationMatrix", 16)};

Fields const eyePoint = doubles({"centerX", "centerY", "centerZ"}) +
                        floats({"yawAngle", "pitchAngle", "rollAngle"}) + Fields{f32("rotationMatrix", 16)} +
                        floats({"viewField", "scale", "nearClippingPlane", "farClippingPlane"}) +
                        Fields{f32("flyThroughMatrix", 16)} +
                        floats({"eyePointX", "eyePointY", "eyePointZ", "flyThroughYaw", "pitchThroughYaw",
                                "eyeVectorI", "eyeVectorJ", "eyeVectorK"}) +
                        ints({"flyThroughFlag", "orthoDrawingFlag", "isValidEyePointFlag", "imageOffsetX",
                              "imageOffsetY", "imageZoom"}) +
                        Fields{skip(36)};

Fields const trackPlane = Fields{i32("activeFlag").is(-1), skip(4)} +
                          doubles({"originX", "originY", "originZ", "alignmentX", "alignmentY", "alignmentZ",
                                   "planeX", "planeY", "planeZ"}) +
                          Fields{i8("gridFlag"),
                                 i8("gridType"),
                                 i8("gridUnder"),
                                 skip(1),
                                 f32("gridAngle"),
                                 f64("gridSpacingX"),
                                 f64("gridSpacingY"),
                                 i8("radialDirectionControl"),
                                 i8("rectangularDirectionControl"),
                                 i8("gridSnap"),
                                 skip(5),
                                 f64("gridSize"),
                                 i32("gridVisibilityMask"),
                                 skip(4)};

Fields const reservedWord = {skip(4)};

} // namespace

int sizeOf(FltKind kind)
{
    switch (kind) {
    case FltKind::chars:
    case FltKind::bytes:
    case FltKind::i8:
    case FltKind::u8:
        return 1;
    case FltKind::i16:
    case FltKind::u16:
        return 2;
    case FltKind::i32:
    case FltKind::u32:
    case FltKind::f32:
        return 4;
    case FltKind::f64:
        return 8;
    }
    return 0;
}

std::vector<FltLayout> const& fltLayouts()
{
    static std::vector<FltLayout> const layouts = {
        {"Header", 1, header},
        {"Group",
         2,
         {chars("idASCII", 8), i16("relativePriority"), skip(2), u32("flags"), i16("id1SpecialEffect"),
          i16("id2SpecialEffect"), i16("significance"), i8("layerCode"), skip(1), skip(4).from(1421)}},
        {"OLDLOD", 3,
         Fields{chars("idASCII", 8), u32("switchInDistance"), u32("switchOutDistance")} + lodTail +
             ints({"XcenterCoordinate", "YcenterCoordinate", "ZcenterCoordinate"})},
        {"Object",
         4,
         {chars("idASCII", 8), u32("flags"), i16("relativePriority"), u16("transparency"),
          i16("id1SpecialEffect"), i16("id2SpecialEffect"), i16("significance"), i16("spare")}},
        {"Face", 5, face},
        {"OldVertex", 7, oldVertexHead},
        {"OldVertexTextured", 7, oldVertexHead + Fields{f32("texture", 2)}},
        {"OldVertexColor", 8, oldVertexHead + oldVertexColor},
        {"OldVertexColorTextured", 8, oldVertexHead + oldVertexColor + Fields{f32("texture", 2)}},
        {"OldVertexColorNormal", 9, oldVertexHead + oldVertexColor + Fields{f32("vertexNormalScaled", 3)}},
        {"OldVertexColorNormalTextured", 9,
         oldVertexHead + oldVertexColor + Fields{f32("vertexNormalScaled", 3), f32("texture", 2)}},
        {"PushLevel", 10, {}},
        {"PopLevel", 11, {}},
        {"DOF", 14, dof},
        {"PushSubface", 19, {}},
        {"PopSubface", 20, {}},
        {"PushExtension", 21, {skip(18), u16("vertexReferenceIndex")}},
        {"PopExtension", 22, {skip(18), u16("vertexReferenceIndex")}},
        {"Comment", 31, {chars("textDescription", rest)}},
        // Colours as words whose bytes are alpha, blue, green, red; entries of names go into "names" as
        // bytes.
        {"ColorPalette",
         32,
         {bytes("ramps", 96).below(14), bytes("fixedColors", 168).below(14),
          u32("color", 512).from(14).below(1421), skip(128).from(1421), u32("color", 1024).from(1421),
          bytes("names", rest).from(1421)}},
        {"LongID", 33, {chars("idASCII", rest)}},
        {"Matrix", 49, {f32("matrix", 16)}},
        {"Vector", 50, floats({"i", "j", "k"})},
        {"OldBoundingBox", 51,
         ints({"XcoordinateLowestCorner", "YcoordinateLowestCorner", "ZcoordinateLowestCorner",
               "XcoordinateHighestCorner", "YcoordinateHighestCorner", "ZcoordinateHighestCorner"})},
        {"Multitexture", 52, {u32("attributeMask"), {"layers", K::u16, rest}}},
        {"UVList", 53, {u32("attributeMask"), f64("values", rest)}},
        {"Replicate", 60, {i32("numberOfReplications"), skip(4)}},
        {"InstanceReference", 61, {i16("spare"), i16("instanceDefinitionNumber")}},
        {"InstanceDefinition", 62, {i16("spare"), i16("instanceDefinitionNumber")}},
        {"ExternalReference", 63, {chars("asciiPath", 200), skip(4), u32("Flags"), skip(4)}},
        {"TexturePattern",
         64,
         {chars("fileName", 200), i32("patternIndex"), i32("XlocationInTexturePalette"),
          i32("YlocationInTexturePalette")}},
        {"ShortTexturePattern",
         64,
         {chars("fileName", 80), i32("patternIndex"), i32("XlocationInTexturePalette"),
          i32("YlocationInTexturePalette")}},
        // 64 entries of 46 words: fourteen floats, flags, three words of name, 28 spare words.
        {"OLDMaterialPalette", 66, {bytes("entries", 11776)}},
        {"VertexPalette", 67, {u32("vertexPaletteTotalLength")}},
        {"VertexColor", 68, vertexHead + vertexColor},
        {"VertexColorNormal", 69, vertexHead + Fields{f32("vertexNormal", 3)} + vertexColor + vertexReserved},
        {"VertexColorNormalUv", 70,
         vertexHead + Fields{f32("vertexNormal", 3), f32("texture", 2)} + vertexColor + vertexReserved},
        {"VertexColorUv", 71, vertexHead + Fields{f32("texture", 2)} + vertexColor},
        {"VertexList", 72, {i32("offsets", rest)}},
        {"LOD", 73,
         Fields{chars("idASCII", 8), skip(4), f64("switchInDistance"), f64("switchOutDistance")} + lodTail +
             doubles({"XcenterCoordinate", "YcenterCoordinate", "ZcenterCoordinate", "transitionRange"})},
        {"BoundingBox", 74,
         reservedWord +
             doubles({"XcoordinateLowestCorner", "YcoordinateLowestCorner", "ZcoordinateLowestCorner",
                      "XcoordinateHighestCorner", "YcoordinateHighestCorner", "ZcoordinateHighestCorner"})},
        {"RotateAboutEdge", 76,
         reservedWord + doubles({"XCenter1", "YCenter1", "ZCenter1", "XCenter2", "YCenter2", "ZCenter2"}) +
             Fields{f32("angleToRotate")}},
        {"Translate", 78, reservedWord + doubles({"x", "y", "z", "deltaX", "deltaY", "deltaZ"})},
        {"ScaleNonUniform", 79,
         reservedWord + doubles({"XCenter", "YCenter", "ZCenter"}) +
             floats({"XScaleFactor", "YScaleFactor", "ZScaleFactor"})},
        {"RotateAboutPoint", 80,
         reservedWord + doubles({"XCenterOfRotation", "YCenterOfRotation", "ZCenterOfRotation"}) +
             floats({"IAxisOfRotation", "JAxisOfRotation", "KAxisOfRotation", "angleToRotate"})},
        {"PutTransform", 82,
         reservedWord +
             doubles({"XFromOrigin", "YFromOrigin", "ZFromOrigin", "XFromAlign", "YFromAlign", "ZFromAlign",
                      "XFromTrack", "YFromTrack", "ZFromTrack", "XToOrigin", "YToOrigin", "ZToOrigin",
                      "XToAlign", "YToAlign", "ZToAlign", "XToTrack", "YToTrack", "ZToTrack"}) +
             Fields{f32("angleToRotate")}},
        {"EyePointTrackPlane", 83, reservedWord + eyePoint + Fields{skip(3728)}},
        // The same bytes as the decoder reads them for its trackplanes.
        {"EyePointTrackPlaneAsTrackPlane", 83, reservedWord + trackPlane + Fields{skip(3872)}},
        {"MorphVertexList", 89, {i32("offsets", rest)}},
        {"Sound", 91,
         Fields{chars("idASCII", 8), skip(4), i32("index"), skip(4), f64("origin", 3), f32("direction", 3)} +
             floats({"amplitude", "pitch", "priority", "falloff", "width"}) + Fields{u32("flags"), skip(4)}},
        {"SoundPaletteTable",
         93,
         {i32("subTypeWord").is(1), i32("maxNumber"), i32("actualNumber"), i32("totalLength"), skip(12),
          i32("entries", rest)}},
        {"SoundPaletteNames", 93, {i32("subTypeWord").is(2), i32("dataLength"), bytes("packedData", rest)}},
        {"GeneralMatrix", 94, {f32("matrix", 16)}},
        {"Text", 95, text},
        {"Switch",
         96,
         {chars("idASCII", 8), skip(4), i32("indexOfCurrentMask"), i32("numberOfMasks"),
          i32("numberOf32BitWordsPerMask"), u32("masks", rest)}},
        {"LineStylePalette", 97, {i16("lineStyleIndex"), i16("patternMask"), i32("lineWidth")}},
        {"ClipRegion",
         98,
         {chars("idASCII", 8), i32("reserved1"), i16("reserved2"), bytes("flags", 6), f64("clipRegion1", 3),
          f64("clipRegion2", 3), f64("clipRegion3", 3), f64("clipRegion4", 3), f64("clipRegionCoefs", 20)}},
        {"ExtensionAttribute",
         100,
         {chars("idASCII", 8), chars("idSite", 8), skip(1), u8("revision"), u16("recordCode"),
          bytes("extensionData", rest)}},
        {"LightSource",
         101,
         {chars("idASCII", 8), skip(4), i32("indexIntoLightPalette"), skip(4), bytes("flags", 4), skip(4),
          f64("localOrSpotPositionCoordinateX"), f64("localOrSpotPositionCoordinateY"),
          f64("localOrSpotPositionCoordinateZ"), f32("infiniteOrSpotYaw"), f32("infiniteOrSpotPitch")}},
        {"LightSourcePalette", 102, lightSourcePalette},
        {"BoundingVolumeSphere", 105, reservedWord + doubles({"radius"})},
        {"BoundingVolumeCylinder", 106, reservedWord + doubles({"radius", "heitght"})},
        {"BoundingVolumeCenter", 108,
         reservedWord + doubles({"XcoordinateCenter", "YcoordinateCenter", "ZcoordinateCenter"})},
        {"BoundingVolumeOrientation", 109, reservedWord + doubles({"yawAngle", "pitchAngle", "rollAngle"})},
        {"LightPoint", 111, lightPoint},
        // The block of the mapping's type follows the head.
        {"TextureMappingPalette", 112, textureMappingHead + Fields{bytes("block", rest)}},
        {"PutTextureMapping", 112,
         textureMappingHead + Fields{i32("toolState"), i32("activeGeometryPoint"), f64("lowerLeftCorner", 3),
                                     f64("upperRightCorner", 3), i32("sizeFlags", 3), f64("textureOrigin", 3),
                                     f64("textureAlignment", 3), f64("textureShear", 3),
                                     f64("geometryOrigin", 3), f64("geometryAlignment", 3),
                                     f64("geometryShear", 3), i32("activeTexturePoint"), i32("displayType")}},
        {"PointPutTextureMapping", 112,
         textureMappingHead + Fields{i32("toolState"), i32("activeGeometryPoint"), f64("lowerLeftCorner", 3),
                                     f64("upperRightCorner", 3), i32("sizeFlags", 4), f64("textureOrigin", 3),
                                     f64("textureAlignment", 3), f64("textureShear", 3),
                                     f64("texturePerspective", 3), f64("geometryOrigin", 3),
                                     f64("geometryAlignment", 3), f64("geometryShear", 3),
                                     f64("geometryPerspective", 3), i32("activeTexturePoint"), skip(4),
                                     f32("depthScale"), f64("matrix", 16), i32("lastWords", rest)}},
        {"SphericalTextureMapping", 112,
         textureMappingHead + Fields{f32("scale"), f64("center", 3), f32("scaleRatio"), f32("maxDimension")}},
        {"RadialTextureMapping", 112,
         textureMappingHead + Fields{i32("activeGeometryPoint"), skip(4), f32("radialScale"),
                                     f32("lengthScale"), f64("matrix", 16), f64("endPoint1", 3),
                                     f64("endPoint2", 3)}},
        {"WarpedTextureMapping", 112,
         textureMappingHead + Fields{i32("activeGeometryPoint"), i32("toolState"), f64("matrix", 16),
                                     f64("fromPoint", 16), f64("toPoint", 16)}},
        {"Material",
         113,
         {i32("index"), chars("name", 12), u32("flags"), f32("ambient", 3), f32("diffuse", 3),
          f32("specular", 3), f32("emissive", 3), f32("shininess"), f32("alpha"), skip(4)}},
        // Entries of names go into "entries" as bytes.
        {"NamePalette", 114, {i32("numberOfNames"), u16("nextAvailableIndex"), bytes("entries", rest)}},
    };
    return layouts;
}
