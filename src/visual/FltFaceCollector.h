#pragma once

#include "model/FltBowTie.h"
#include "model/FltLeftOut.h"
#include "model/FltModel.h"
#include "records/FltRecordFace.h"
#include "visual/FltFaceReceiver.h"
#include "visual/FltFileTextures.h"
#include "visual/FltMeshBuilder.h"
#include "visual/FltNodeBuilder.h"
#include "visual/FltObjectLook.h"
#include "visual/FltPolygonCutter.h"

#include <unordered_map>
#include <vector>

/// Where corners of faces stand when they aren't drawn where the database has them.
struct FltPlacement {
    double rows[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    double origin[3] = {}; ///< What becomes the local origin.

    SbVec3d place(SbVec3d const& point) const
    {
        return turn(point - SbVec3d(origin[0], origin[1], origin[2]));
    }
    SbVec3d turn(SbVec3d const& direction) const
    {
        auto const row = [&](int i) {
            return rows[i][0] * direction[0] + rows[i][1] * direction[1] + rows[i][2] * direction[2];
        };
        return {row(0), row(1), row(2)};
    }
};

/// What the meshes of one file share while they are made.
struct FltMeshTools {
    FltMeshTools(FltModel& model, std::vector<FltTexture>& textures, FltLeftOut& leftOut)
        : model(model), textures(model.palettes, textures), leftOut(leftOut)
    {
    }

    /// In which batch a vertex was last used, and as which corner.
    struct Stamp {
        std::uint32_t batch = 0;
        std::int32_t corner = 0;
    };

    Stamp& stampOf(std::uint32_t vertex)
    {
        if (vertex >= stamps.size())
            stamps.resize(model.vertices.size());
        return stamps[vertex];
    }

    FltModel& model; ///< Faces and meshes with vertices of their own add them to its store.
    FltFileTextures textures;
    FltLeftOut& leftOut;
    FltPolygonCutter cutter;
    std::vector<Stamp> stamps; ///< By the number of the vertex.
    std::uint32_t batchCount = 0;
};

/// A face as it stands in the database: its record, and its vertices.
struct FltFaceInput {
    explicit FltFaceInput(FltRecordFace const& record) : record(record) {}

    FltRecordFace const& record;
    FltModelTree::Number number = FltModelTree::none; ///< In the hierarchy.
    std::vector<std::uint32_t> vertices;              ///< Numbers in the vertex store.
    int level = 0;                                    ///< How many faces it lies on.
    FltObjectLook object;                             ///< What the Object around it says.
    FltPlacement const* placement = nullptr;
    bool isLightPoints = false; ///< Only its vertices are drawn.
    float pointSize = 0;        ///< Of light points in pixels; 0 for the usual one.

    std::vector<FltFileTextures::Layer> layers; ///< Further textures.
    std::vector<std::vector<SbVec2f>> layerUvs; ///< Of each layer, for each vertex.
};

/// Collects the faces of a part of the hierarchy, and makes one mesh of all that look alike.
class FltFaceCollector : public FltFaceReceiver
{
public:
    explicit FltFaceCollector(FltMeshTools& tools) : tools(tools) {}

    void add(FltFaceInput const& input) override;

    /// Adds the meshes of all faces to a node. The collector is empty again then.
    void finish(FltNodeBuilder& node);

    /// @name How a face is drawn
    /// @{

    /// As what. The vertices have to be there.
    static FltMesh::Kind kindOf(FltFaceInput const& input);

    /// Whether light falls on it.
    static bool isLit(FltFaceInput const& input);

    /// Whether both sides are seen.
    static bool isTwoSided(FltFaceInput const& input);

    /// Whether nothing is seen of it, unless somebody asks for it.
    static bool isHidden(FltFaceInput const& input);

    /// How much of it is seen, from 0 for nothing to 255 for all: by its own transparency, and those of the
    /// Object and the material.
    std::uint32_t alphaOf(FltFaceInput const& input) const;
    /// @}

private:
    struct Look {
        FltAppearance appearance;
        std::uint32_t color = FltColors::white; ///< Of the face, with its alpha.
        bool usesVertexColors = false;
        FltMaterialValues const* material = nullptr;
    };
    struct Batch {
        Batch(FltAppearance const& appearance, std::uint32_t stamp) : mesh(appearance), stamp(stamp) {}

        FltMeshBuilder mesh;
        std::uint32_t stamp;
        FltMaterialValues const* material = nullptr;
    };

    Look lookOf(FltFaceInput const& input) const;
    FltMaterialValues const* materialOf(FltFaceInput const& input) const;
    Look lineLookOf(Look const& look, FltFaceInput const& input, bool isAlternate) const;
    std::uint32_t faceColor(FltRecordFace const& record, bool isTextured) const;
    std::uint32_t alternateColor(FltRecordFace const& record) const;
    float lineWidthOf(FltRecordFace const& record) const;
    void addFaces(FltFaceInput const& input, Look const& look);
    bool doNormalsOppose(FltFaceInput const& input) const;
    void addBowTie(FltFaceInput const& input, Look const& look, FltBowTie const& shape);
    void addLines(FltFaceInput const& input, Look const& look, bool isClosed);
    void addPoints(FltFaceInput const& input, Look const& faceLook);
    Batch& batchOf(Look const& look);
    std::int32_t cornerOf(Batch& batch, FltFaceInput const& input, std::size_t which, Look const& look);
    void collectPoints(FltFaceInput const& input);

    FltMeshTools& tools;
    std::vector<Batch> batches;
    std::unordered_map<FltAppearance, std::size_t, FltAppearance::Hash> numbers;
    std::vector<SbVec3d> points; ///< Of the face that is being added.
    SbVec3d normal{0, 0, 1};
    SbVec3f unitNormal{0, 0, 1};
    std::vector<std::int32_t> corners;
};
