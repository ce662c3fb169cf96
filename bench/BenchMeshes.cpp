#include "BenchDatabase.h"

#include "writer/FltMeshRecords.h"
#include "writer/FltWriter.h"

#include <numeric>
#include <string>
#include <vector>

using Mesh = FltMeshRecords;

namespace
{

constexpr int revision = 1580;
constexpr int verticesInMesh = 1500;

/// Two rows of vertices, the second a unit beside the first.
std::string poolOf(int mesh)
{
    std::string pool =
        Mesh::poolHead(verticesInMesh, Mesh::hasPlace | Mesh::hasPackedColor | Mesh::hasNormal);
    for (int i = 0; i < verticesInMesh; ++i) {
        int const row = i % 2 + 2 * mesh;
        for (int const coordinate : {i / 2, row, i % 7})
            pool += FltWriter::bigDouble(coordinate + coordinate % 10 / 10.0);
        pool += FltWriter::big32(0xff204000L + i % 256);
        pool += FltWriter::bigFloat(0) + FltWriter::bigFloat(0) + FltWriter::bigFloat(1);
    }
    return pool;
}

std::string strip()
{
    std::vector<int> indices(verticesInMesh);
    std::iota(indices.begin(), indices.end(), 0);
    return Mesh::primitive(Mesh::triangleStrip, 2, indices);
}

} // namespace

std::size_t BenchDatabase::writeMeshes(std::string const& path, int vertexCount)
{
    FltWriter flt(revision);
    flt.push().add("Object").push();
    for (int mesh = 0; mesh < vertexCount / verticesInMesh; ++mesh)
        flt.addRaw(Mesh::meshOpcode, Mesh::mesh())
            .addRaw(Mesh::poolOpcode, poolOf(mesh))
            .push()
            .addRaw(Mesh::primitiveOpcode, strip())
            .pop();
    flt.pop().pop().save(path);
    return flt.bytes().size();
}
