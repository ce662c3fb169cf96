#pragma once

class FltAllowance;
class FltVertexPalette;
struct FltPalettes;

/// What the faces of all Objects of a file share: all that FltObjectToSoSeparator needs of a conversion.
struct FltFaceResources {
    FltVertexPalette& vertices;
    FltPalettes const& palettes;
    FltAllowance& oldVertexIndices; ///< In the face sets of obsolete vertices.
};
