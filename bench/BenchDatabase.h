#pragma once

#include <cstddef>
#include <string>

/// Writes large databases fast.
///
/// Each record is made once by the writer of the tests; what differs from one to the next is written into a
/// copy of its bytes. All are of revision 1580. @return the size of what was written, in bytes
namespace BenchDatabase
{

constexpr int facesInObject = 500;

/// How the faces of a terrain come by their vertices.
enum class Vertices {
    ownOfEachFace, ///< Each is named once, in the order of the palette.
    shared,        ///< Each belongs to the faces around it, as on any surface.
    random,        ///< Faces name them without any order.
    old            ///< Of the obsolete form, below their face.
};

/// What the faces of a terrain look like.
enum class Appearance {
    packedColors,     ///< Each has a colour, and no texture or material.
    changesAtEachFace ///< Each has another texture and another material than the one before.
};

/// A terrain of faces with four corners, and, where the vertices are shared, every fourth with three. Places
/// and heights are as irregular as those of a surveyed one; vertices have colour and normal.
std::size_t writeTerrain(std::string const& path, int vertexCount, Vertices vertices,
                         Appearance appearance = Appearance::packedColors);

/// Meshes of 1,500 vertices with colour and normal, each a strip of triangles, in one Object.
std::size_t writeMeshes(std::string const& path, int vertexCount);

enum class Names { distinct, equal };

/// Objects of one face each.
std::size_t writeObjects(std::string const& path, int count, Names names);

/// A database of external references to files beside it, each a small terrain of its own.
std::size_t writeTiles(std::string const& path, int count, int facesInEach);

constexpr int texturesOfTown = 20;

enum class Windows { opaque, someTranslucent };

/// A town of Objects of 50 faces, each with one of 20 textures, whose pictures are written beside it. Of
/// translucent windows there is one among three.
std::size_t writeTown(std::string const& path, int buildings, Windows windows);

} // namespace BenchDatabase
