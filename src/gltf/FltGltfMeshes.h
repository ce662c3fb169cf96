#pragma once

#include "gltf/FltGltfLosses.h"
#include "gltf/FltGltfMaterials.h"
#include "gltf/GltfCorners.h"
#include "gltf/GltfDocument.h"
#include "gltf/GltfVertexViews.h"
#include "visual/FltVisualNode.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// The meshes of a glTF file. What stands at several places is there once.
class FltGltfMeshes
{
public:
    /// All have to outlive this object.
    /// @param quantizes as in FltGltfOptions
    FltGltfMeshes(GltfDocument& document, FltGltfMaterials& materials, FltGltfLosses& losses,
                  bool quantizes = false)
        : document(document), materials(materials), losses(losses), quantizes(quantizes), views(document)
    {
    }

    /// Where the meshes of a node stand, and how.
    struct Place {
        SbVec3d zero{0, 0, 0};                ///< What positions count from.
        double metresPerUnit = 1;             ///< Of positions.
        SbDPMatrix const* workedIn = nullptr; ///< What positions have to bring along; null for nothing.
        bool isLifted = true;                 ///< Whether faces stand in front of those that they lie on.
        bool isShared = false;                ///< Whether the node may stand elsewhere, too.
    };

    /// A mesh of the file.
    struct Written {
        int number;
        SbVec3d stand;           ///< Where it stands in its node.
        double step;             ///< What its positions count, in units of its node; 1 unless quantized.
        bool isHidden;           ///< It is to be seen only if somebody asks for it.
        std::uint64_t triangles; ///< In it.

        /// Whether it needs no node of its own.
        bool isRightIn() const { return stand == SbVec3d(0, 0, 0) && step == 1 && !isHidden; }
    };

    /// The meshes of a node, those that stand right in it first.
    /// @param keepsHidden whether those that aren't to be seen are needed
    std::vector<Written> of(FltVisualNode const& node, Place const& place, bool keepsHidden);

    std::uint64_t vertices() const { return vertexCount; }

private:
    class Collected;
    struct Part;

    std::vector<Written> write(FltVisualNode const& node, Place const& place, bool keepsHidden);
    void addPrimitives(Part const& part, Collected& collected);
    bool mayRepeat(FltVisualNode const& node);

    GltfDocument& document;
    FltGltfMaterials& materials;
    FltGltfLosses& losses;
    bool const quantizes;
    GltfVertexViews views;
    std::uint64_t vertexCount = 0;
    std::map<std::string, std::vector<Written>> shared; ///< By what makes one differ from another.
    std::map<FltVisualNode const*, std::vector<Written> const*> firstForms;
    std::int64_t repeated = 0; ///< Corners that are there again in another form.
};
