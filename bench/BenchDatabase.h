#pragma once

#include <cstddef>
#include <string>

/// Writes databases of many vertices fast: a terrain of four-cornered faces.
///
/// Each record is made once by the writer of the tests; what differs from one to the next is written into a
/// copy of its bytes.
class BenchDatabase
{
public:
    static constexpr int facesInObject = 500;
    static constexpr int verticesInFace = 4;

    /// Writes a database at revision 1570. Vertices have colour and normal; places and heights are as
    /// irregular as those of a surveyed terrain.
    /// @param vertexCount a multiple of four; every vertex belongs to one face
    /// @return the size of the file in bytes
    static std::size_t write(std::string const& path, int vertexCount);
};
