#pragma once

/// The numbers of what a check finds: 101 is told as "FLT-101". They never change, and FltFindingTable has a
/// row for each.
namespace FltFindingNumber
{

enum : int {
    zeroLength = 101,
    recordPastEnd = 102,
    cutHead = 103,
    shorterThanHead = 104,
    shorterThanLayout = 105,
    brokenPromise = 106,
    unknownOpcode = 107,
    textTransfer = 108,

    lostVertex = 201,
    noArea = 202,
    noVertices = 203,
    concaveFace = 204,
    unevenFace = 205,
    unusablePlace = 206,
    noTextureCoordinates = 207,
    lostMeshVertex = 208,
    emptyMesh = 209,
    nothingToSee = 210,

    undefinedTexture = 301,
    undefinedMaterial = 302,
    undefinedColor = 303,
    undefinedLineStyle = 304,
    undefinedMapping = 305,
    undefinedLight = 306,
    repeatedIndex = 307,

    missingTexture = 401,
    missingReference = 402,
    circularReference = 403,
    unreadableReference = 404,
    textureElsewhere = 405,
    tooDeepReference = 406,

    popWithoutPush = 501,
    neverClosed = 502,
    pushWithoutNode = 503,
    emptyGroup = 504,
    repeatedName = 505,
    undefinedInstance = 506,
    unusedDefinition = 507,
    repeatedDefinition = 508,
    circularInstance = 509,
    tooDeepLevels = 510,
    strayRecord = 511,

    emptyRange = 601,
    hiddenRange = 602,
    noSuchMask = 603,
    neverShownChild = 604,
    impossibleLimits = 605,
    flatMatrix = 606,
    unusableRange = 607,

    lostMesh = 801,
    tooManyVertices = 802,
    lostSubfaces = 803,
    passedOverInstance = 804,
    drawnDefinition = 805,
    lostCopies = 806,
    wrongChildren = 807,
    mixedVertices = 808,
    pointOrLine = 809,
    jointAtZero = 810,
    lostLightSource = 811,
    lostPointOrText = 812,
    fixedBillboard = 813,
    drawnHiddenFace = 814,
    lostTransformation = 815,

    notShown = 901,
};

} // namespace FltFindingNumber
