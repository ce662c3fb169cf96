#pragma once

#include <cstddef>
#include <cstdint>

/// @file
/// Texture layers where the format has them: layer 1 at the highest bit of a mask. The records of the exact
/// conversion, FltRecordMultitexture and FltRecordUVList, count the layers from the lowest bit on.

/// Which texture layers there are above a face's own texture.
struct FltTextureLayerMask {
    static constexpr int layerCount = 7; ///< Layers 1 to 7.

    std::uint32_t attributeMask = 0;

    bool hasLayer(int layer) const { return (attributeMask >> (32 - layer) & 1) != 0; }
};

/// The textures of the layers of a face.
struct FltRecordTextureLayers : FltTextureLayerMask {
    struct Layer {
        std::uint16_t texture = 0;
        std::uint16_t effect = 0;
        std::uint16_t mapping = 0;
        std::uint16_t data = 0;
    };

    Layer layers[layerCount]; ///< Layer n at entry n - 1.

    Layer const& layer(int number) const { return layers[number - 1]; }

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("attributeMask", self.attributeMask);
        for (int number = 1; number <= layerCount; ++number) {
            if (!visit.when(self.hasLayer(number)))
                continue;
            auto& layer = self.layers[number - 1];
            visit("texture", layer.texture);
            visit("effect", layer.effect);
            visit("mapping", layer.mapping);
            visit("data", layer.data);
        }
    }
};

/// The head of a list of texture coordinates, one entry for each vertex of the vertex list before.
struct FltRecordLayerUVs : FltTextureLayerMask {
    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("attributeMask", self.attributeMask);
    }

    /// The coordinates of one vertex. A vertex that changes its place has two of each.
    struct Entry : FltTextureLayerMask {
        Entry(FltRecordLayerUVs const& head, bool isMorph) : FltTextureLayerMask(head), isMorph(isMorph) {}

        bool isMorph;
        float from[layerCount][2] = {}; ///< Of a morph vertex. Layer n at entry n - 1.
        float to[layerCount][2] = {};   ///< Of any vertex.

        template <class Self, class Visitor>
        static void fields(Self& self, Visitor& visit)
        {
            for (int number = 1; number <= layerCount; ++number) {
                if (!visit.when(self.hasLayer(number)))
                    continue;
                if (visit.when(self.isMorph))
                    visit("from", self.from[number - 1]);
                visit("to", self.to[number - 1]);
            }
        }
    };
};
