#pragma once

#include "records/FltRecordFace.h"

#include <cstddef>
#include <cstdint>

/// Faces that share the vertices of a pool, with the appearance of one face.
///
/// The factory never makes one: records of its opcode stay unknown.
class FltRecordMesh : public FltRecordFace
{
public:
    using FltRecordFace::FltRecordFace;

    int getOpcode() const override { return FltOpcode::mesh; }
    void getPropertiesFromData(char* data) override;

    std::int32_t reservedOfMesh = 0;

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        idFields(self, visit);
        visit("reservedOfMesh", self.reservedOfMesh, dumpAs::nothing);
        surfaceFields(self, visit);
    }
};

/// The head of the vertices of a mesh, which follow it one after the other. No record of the factory.
struct FltRecordLocalVertexPool {
    std::uint32_t numberOfVertices = 0;
    std::uint32_t attributeMask = 0; ///< What every vertex holds.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("numberOfVertices", self.numberOfVertices);
        visit("attributeMask", self.attributeMask);
    }

    /// One of the vertices. What the mask doesn't name takes no room in the file.
    struct Vertex {
        static constexpr int layerCount = 8;

        /// Of the mask, from its highest bit on.
        enum Bit : std::uint32_t {
            hasPosition = 1U << 31,
            hasColorIndex = 1U << 30,
            hasPackedColor = 1U << 29,
            hasNormal = 1U << 28,
            hasFirstUv = 1U << 27, ///< That of layer 0; those of the others follow it.
        };

        std::uint32_t mask = 0;
        double position[3] = {};
        std::int32_t colorIndex = 0;
        std::uint8_t packedColor[4] = {}; ///< Alpha, blue, green, red.
        float normal[3] = {};
        float uv[layerCount][2] = {};

        bool has(Bit bit) const { return (mask & bit) != 0; }
        bool hasLayer(int layer) const { return (mask & hasFirstUv >> layer) != 0; }

        template <class Self, class Visitor>
        static void fields(Self& self, Visitor& visit)
        {
            if (visit.when(self.has(hasPosition)))
                visit("position", self.position);
            if (visit.when(self.has(hasColorIndex)))
                visit("colorIndex", self.colorIndex);
            if (visit.when(self.has(hasPackedColor)))
                visit("packedColor", self.packedColor);
            if (visit.when(self.has(hasNormal)))
                visit("normal", self.normal);
            for (int layer = 0; layer < layerCount; ++layer)
                if (visit.when(self.hasLayer(layer)))
                    visit("uv", self.uv[layer]);
        }
    };
};

/// The head of some faces of a mesh, whose indices into the pool follow it. No record of the factory.
struct FltRecordMeshPrimitive {
    enum Type : std::int16_t { triangleStrip = 1, triangleFan = 2, quadStrip = 3, polygon = 4 };

    std::int16_t primitiveType = 0;
    std::int16_t indexSize = 0; ///< Bytes of an index: 1, 2 or 4.
    std::uint32_t indexCount = 0;

    bool hasIndices() const { return indexSize == 1 || indexSize == 2 || indexSize == 4; }

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("primitiveType", self.primitiveType);
        visit("indexSize", self.indexSize);
        visit("indexCount", self.indexCount);
    }

    /// One of the indices, in as many bytes as the head says.
    struct Index {
        std::int16_t size = 0;
        std::uint8_t byte = 0;
        std::uint16_t word = 0;
        std::uint32_t longWord = 0;

        std::uint32_t value() const { return size == 1 ? byte : size == 2 ? word : longWord; }

        template <class Self, class Visitor>
        static void fields(Self& self, Visitor& visit)
        {
            if (visit.when(self.size == 1))
                visit("byte", self.byte);
            else if (visit.when(self.size == 2))
                visit("word", self.word);
            else if (visit.when(self.size == 4))
                visit("longWord", self.longWord);
        }
    };
};
