#pragma once

#include "inspect/FltCheckFamily.h"
#include "inspect/FltTextTransfer.h"

/// Vertices, faces and meshes: 2xx.
class FltCheckGeometry : private FltCheckFamily
{
public:
    using FltCheckFamily::FltCheckFamily;

    void check();

private:
    void checkLostOffsets();
    void checkFace(FltInventory::Face const& face);
    void checkShape(FltInventory::Face const& face);
    void checkTextureCoordinates(FltInventory::Face const& face);
    void checkMesh(FltInventory::Mesh const& mesh);

    FltTextTransfer const transfer{inventory};
};
