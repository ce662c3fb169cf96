#pragma once

#include <string>
#include <vector>

/// What the records hold that a mesh consists of, behind opcode and length: for FltWriter::addRaw().
class FltMeshRecords
{
public:
    static constexpr int meshOpcode = 84;
    static constexpr int poolOpcode = 85;
    static constexpr int primitiveOpcode = 86;

    enum Primitive { triangleStrip = 1, triangleFan = 2, quadStrip = 3, polygon = 4 };

    /// What the vertices of a pool have, in this order: bits of its mask.
    static constexpr unsigned hasPlace = 0x80000000U;
    static constexpr unsigned hasColorIndex = 0x40000000U;
    static constexpr unsigned hasPackedColor = 0x20000000U;
    static constexpr unsigned hasNormal = 0x10000000U;
    static constexpr unsigned hasTexture = 0x08000000U;

    /// A mesh without texture, material and mapping, drawn solid and unlit in its own colour.
    static std::string mesh(std::string const& name = "");

    /// What a pool begins with; its vertices follow.
    static std::string poolHead(std::size_t vertexCount, unsigned mask);

    /// A pool of vertices that have places alone.
    static std::string pool(std::vector<std::vector<double>> const& places);

    /// What a primitive begins with; its indices follow.
    /// @param bytesOfIndex 1, 2 or 4
    static std::string primitiveHead(int type, int bytesOfIndex, std::size_t indexCount);

    static std::string primitive(int type, int bytesOfIndex, std::vector<int> const& indices);
};
