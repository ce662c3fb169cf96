#pragma once

#include "complete/FltAppearance.h"
#include "complete/FltAppearanceNodes.h"
#include "complete/FltScenePart.h"
#include "model/FltPaletteSet.h"

#include <Inventor/SbColor.h>
#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3f.h>
#include <cstddef>
#include <cstdint>
#include <vector>

class SoVertexProperty;

/// All faces, lines or points that one shape of the toolkit draws.
class FltShapeBatch
{
public:
    /// A corner of a face as it is drawn.
    struct Corner {
        SbVec3f position;
        SbVec3f normal{0, 0, 1};
        SbVec2f uv{0, 0};
        std::uint32_t color = FltColors::white; ///< Red, green, blue and alpha.
    };

    explicit FltShapeBatch(FltAppearance const& appearance) : appearance(appearance) {}

    FltAppearance const& getAppearance() const { return appearance; }

    /// Adds a corner. @return its number
    std::int32_t addCorner(Corner const& corner, SbColor const& ambient);

    /// Adds the texture coordinates of the next further texture for the corner that was added last.
    void addLayerUv(std::size_t layer, SbVec2f const& uv);

    /// Whether a corner looks as this one does, wherever it stands.
    bool looksAlike(std::int32_t number, Corner const& corner) const;

    /// Adds the number of a corner, or -1 for the end of a face or a line.
    void addIndex(std::int32_t index) { indices.push_back(index); }

    std::int32_t getCornerCount() const { return static_cast<std::int32_t>(positions.size()); }

    /// The scene of the batch.
    FltScenePart makePart(FltAppearanceNodes& nodes, FltMaterialValues const* material) const;

private:
    SoVertexProperty* makeVertexProperty() const;
    void addLayerCoordinates(FltGroupBuilder& group, FltAppearanceNodes& nodes) const;
    SoNode* makeMaterial(FltMaterialValues const* material) const;
    SoNode* makeShape() const;
    bool hasOneColor() const { return !hasSeveralColors; }

    FltAppearance appearance;
    std::vector<SbVec3f> positions;
    std::vector<SbVec3f> normals;
    std::vector<SbVec2f> uvs;
    std::vector<std::uint32_t> colors;
    std::vector<std::vector<SbVec2f>> layerUvs;
    std::vector<std::int32_t> indices;
    double ambientSum[3] = {};
    bool hasSeveralColors = false;
};
