#pragma once

#include "model/FltColors.h"
#include "model/FltPaletteSet.h"
#include "visual/FltAppearance.h"
#include "visual/FltMesh.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Collects all faces, lines or points of one mesh.
class FltMeshBuilder
{
public:
    /// A corner of a face as it is drawn.
    struct Corner {
        SbVec3d position;
        SbVec3f normal{0, 0, 1};
        SbVec2f uv{0, 0};
        std::uint32_t color = FltColors::white; ///< Red, green, blue and alpha.
    };

    explicit FltMeshBuilder(FltAppearance const& appearance) : appearance(appearance) {}

    FltAppearance const& getAppearance() const { return appearance; }

    /// Adds a corner. @return its number
    std::int32_t addCorner(Corner const& corner, SbColor const& ambient);

    /// Adds the texture coordinates of the next further texture for the corner that was added last.
    void addLayerUv(std::size_t layer, SbVec2f const& uv);

    /// Whether a corner looks as this one does, wherever it stands.
    bool looksAlike(std::int32_t number, Corner const& corner) const;

    /// Adds the number of a corner, or FltMesh::end.
    void addIndex(std::int32_t index) { mesh.indices.push_back(index); }

    /// The mesh, but for its textures. The builder is used up then.
    /// @param metresPerUnit of the corners' places
    FltMesh finish(FltMaterialValues const* material, double metresPerUnit = 1);

private:
    FltMesh::Material materialOf(FltMaterialValues const* values) const;
    void placeCorners(double metresPerUnit);

    FltAppearance appearance;
    FltMesh mesh;
    std::vector<SbVec3d> places; ///< Of the corners.
    double ambientSum[3] = {};
    bool hasSeveralColors = false;
};
