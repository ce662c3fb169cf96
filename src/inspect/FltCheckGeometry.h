#pragma once

#include "inspect/FltCheckFamily.h"
#include "inspect/FltTextTransfer.h"

/// Vertices, faces and meshes: 2xx, with all else that is judged by what is drawn.
class FltCheckGeometry : private FltCheckFamily
{
public:
    using FltCheckFamily::FltCheckFamily;

    void check();

private:
    void checkLostOffsets();
    void checkFace(FltInventory::Face const& face);
    void checkDrawing();
    void checkPlaces(FltInventory::Face const& face);
    void checkTextureCoordinates(FltInventory::Face const& face);
    void checkMesh(FltInventory::Mesh const& mesh);

    FltTextTransfer const transfer{inventory};
};
