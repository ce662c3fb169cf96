#pragma once

/// The records of the format, by the number that each begins with. The names are those of the classes,
/// without the "FltRecord".
namespace FltOpcode
{

enum : int {
    header = 1,
    group = 2,
    oldLOD = 3,
    object = 4,
    face = 5,
    oldVertex = 7,
    oldVertexColor = 8,
    oldVertexColorNormal = 9,
    pushLevel = 10,
    popLevel = 11,
    dof = 14,
    pushSubface = 19,
    popSubface = 20,
    pushExtension = 21,
    popExtension = 22,
    comment = 31,
    colorPalette = 32,
    longID = 33,
    matrix = 49,
    vector = 50,
    oldBoundingBox = 51,
    multitexture = 52,
    uvList = 53, ///< No object is made of such a record: it stays unknown.
    replicate = 60,
    instanceReference = 61,
    instanceDefinition = 62,
    externalReference = 63,
    texturePattern = 64,
    oldMaterialPalette = 66,
    vertexPalette = 67,
    vertexColor = 68,
    vertexColorNormal = 69,
    vertexColorNormalUv = 70,
    vertexColorUv = 71,
    vertexList = 72,
    lod = 73,
    boundingBox = 74,
    rotateAboutEdge = 76,
    translate = 78,
    scaleNonUniform = 79,
    rotateAboutPoint = 80,
    putTransform = 82, ///< Such a record is read as a rotateAboutEdge.
    eyePointTrackPlane = 83,
    morphVertexList = 89,
    sound = 91,
    soundPalette = 93,
    generalMatrix = 94,
    text = 95,
    switchNode = 96,
    lineStylePalette = 97,
    clipRegion = 98,
    extensionAttribute = 100,
    lightSource = 101,
    lightSourcePalette = 102,
    boundingVolumeSphere = 105,
    boundingVolumeCylinder = 106,
    boundingVolumeCenter = 108,
    boundingVolumeOrientation = 109,
    lightPoint = 111,
    textureMappingPalette = 112,
    material = 113,
    namePalette = 114,
};

/// The last opcode that has a class.
constexpr int last = namePalette;

/// A record with a higher opcode ends the contents of an Object.
constexpr int lastOfObject = 132;

} // namespace FltOpcode
