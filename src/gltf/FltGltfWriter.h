#pragma once

#include "gltf/FltGltfLosses.h"
#include "gltf/FltGltfOptions.h"
#include "gltf/FltGltfReport.h"
#include "gltf/FltGltfTextures.h"
#include "gltf/GltfDocument.h"
#include "loader/FltVisual.h"

/// Makes the document of a glTF file from a visual.
class FltGltfWriter
{
public:
    /// @param visual one without a root holds nothing
    /// @param place  of the pictures; without it they are in the file
    FltGltfWriter(FltVisual const& visual, FltGltfOptions const& options,
                  FltGltfTextures::Place const& place = {});

    GltfDocument document;
    int top = 0;          ///< The number of the node at the top.
    FltGltfReport report; ///< But for files and bytes.
};
