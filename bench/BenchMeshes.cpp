#include "BenchDatabase.h"

#include "writer/FltWriter.h"

#include <initializer_list>

namespace
{

constexpr int revision = 1580;
constexpr int verticesInMesh = 1500;

constexpr int meshOpcode = 84;
constexpr int poolOpcode = 85;
constexpr int primitiveOpcode = 86;
constexpr std::size_t meshSize = 80; ///< After opcode and length.
constexpr long withColorAndNormal = 0xb0000000L;
constexpr int triangleStrip = 1;
constexpr int bytesOfIndex = 2;

/// Without texture, material and mapping.
std::string meshRecord()
{
    std::string record(meshSize, '\0');
    for (std::size_t const place : {26, 28, 30, 64})
        record.replace(place, 2, "\xff\xff");
    return record;
}

/// Two rows of vertices, the second a unit beside the first.
std::string poolOf(int mesh)
{
    std::string pool = FltWriter::big32(verticesInMesh) + FltWriter::big32(withColorAndNormal);
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
    std::string record =
        FltWriter::big16(triangleStrip) + FltWriter::big16(bytesOfIndex) + FltWriter::big32(verticesInMesh);
    for (int i = 0; i < verticesInMesh; ++i)
        record += FltWriter::big16(i);
    return record;
}

} // namespace

std::size_t BenchDatabase::writeMeshes(std::string const& path, int vertexCount)
{
    FltWriter flt(revision);
    flt.push().add("Object").push();
    for (int mesh = 0; mesh < vertexCount / verticesInMesh; ++mesh)
        flt.addRaw(meshOpcode, meshRecord())
            .addRaw(poolOpcode, poolOf(mesh))
            .push()
            .addRaw(primitiveOpcode, strip())
            .pop();
    flt.pop().pop().save(path);
    return flt.bytes().size();
}
