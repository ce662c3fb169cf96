#pragma once

#include "visual/FltMesh.h"

#include <Inventor/SbDPMatrix.h>
#include <cstddef>
#include <cstdint>
#include <vector>

/// How the corners of a mesh are written.
struct GltfCornerForm {
    SbVec3d way{0, 0, 0};                 ///< What positions are moved by.
    double lift = 0;                      ///< How far faces stand in front of those that they lie on.
    SbDPMatrix const* workedIn = nullptr; ///< What is done to them then; null for nothing.
};

/// The corners of a mesh as glTF has them, and the triangles, lines or points that they make.
///
/// Positions are finite: what has a corner elsewhere is left out. Each corner is there once; those that
/// nothing uses may be there too. Lists of a kind that the mesh hasn't are empty.
struct GltfCorners {
    /// @param hasUvs whether coordinates of the first texture are needed
    GltfCorners(FltMesh const& mesh, GltfCornerForm const& form, bool hasUvs);

    std::vector<SbVec3f> positions;
    std::vector<SbVec3f> normals; ///< Of length 1.
    std::vector<SbVec2f> uvs;     ///< From the upper left corner of the picture.
    std::vector<std::uint32_t> colors;

    std::size_t cornersOfAShape = 1; ///< 3 of triangles, 2 of lines, 1 of points.
    std::vector<std::uint32_t> indices;
    std::size_t lost = 0; ///< Triangles, lines or points.

private:
    void place(FltMesh const& mesh, GltfCornerForm const& form);
    void takeNormals(FltMesh const& mesh, GltfCornerForm const& form);
    void takeUvs(FltMesh const& mesh);
    void takeIndices(FltMesh const& mesh);
    void joinEqual();
    void orderForCache();
};
