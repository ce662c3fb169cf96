#pragma once

#include "records/FltRecordMesh.h"
#include "visual/FltFaceCollector.h"
#include "visual/FltPlaneOrder.h"

/// Reads faces, meshes and light points with all that stands below them, and hands them to a collector.
class FltFaceReader
{
public:
    explicit FltFaceReader(FltMeshTools& tools)
        : tools(tools), order(tools.model), paletteVertices(tools.model.vertices.size())
    {
    }

    /// Whether a record is one that this class reads.
    static bool reads(std::uint32_t opcode);

    /// Adds a face or mesh and all faces that lie on it.
    /// @param object what the Object around it says
    void read(FltModelTree::Number number, FltFaceReceiver& collector, FltObjectLook const& object,
              FltPlacement const* placement = nullptr);

    /// How a face or mesh turns to the eye.
    enum class Turning { none, aboutAxis, aboutPoint };
    Turning turningOf(FltModelTree::Number number) const;

    /// The places of all vertices of a face or mesh, without those of faces that lie on it.
    std::vector<SbVec3d> pointsOf(FltModelTree::Number number);

    /// Forgets vertices that stand in faces and meshes. Numbers of theirs mean nothing any more.
    void forgetVertices();

private:
    struct Context {
        FltFaceReceiver& collector;
        FltObjectLook const& object;
        FltPlacement const* placement;
    };
    struct MeshPool {
        std::vector<std::uint32_t> vertices;
        std::vector<std::vector<SbVec2f>> layerUvs; ///< Of each texture layer, for each vertex.
    };

    void decode(FltModelTree::Number number, FltRecordMesh& surface) const;
    FltFaceInput read(FltRecordMesh& face, FltModelTree::Number number, Context const& context,
                      int level) const;
    void readFace(FltModelTree::Number number, Context const& context, int below);
    void readMesh(FltModelTree::Number number, Context const& context, int below);
    void readLightPoints(FltModelTree::Number number, Context const& context);
    void readFacesOn(FltModelTree::Number number, Context const& context, int level);
    bool readVertices(FltModelTree::Number number, FltFaceInput& input);
    template <class Entry>
    void readVertexList(FltModelTree::Number list, FltFaceInput& input);
    void addVertex(std::uint32_t vertex, FltFaceInput& input);
    void readLayers(FltModelTree::Number number, FltFaceInput& input) const;
    void readLayerUvs(FltModelTree::Number list, bool isMorph, FltFaceInput& input) const;
    MeshPool const& poolOf(FltModelTree::Number mesh);
    void readPool(FltRecordView const& record, MeshPool& pool);
    void readPrimitive(FltRecordView const& record, MeshPool const& vertices, FltFaceInput& input,
                       FltFaceReceiver& collector);
    void addMeshVertex(std::uint32_t index, MeshPool const& vertices, FltFaceInput& input) const;

    FltMeshTools& tools;
    FltPlaneOrder order;
    std::size_t paletteVertices; ///< Those that were there before.
    MeshPool pool;
    FltModelTree::Number poolMesh = FltModelTree::none;
    std::size_t missingVertices = 0; ///< Of the face that is being read.
};
