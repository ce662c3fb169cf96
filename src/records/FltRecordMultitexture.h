#pragma once

#include "records/AbstractFltRecord.h"
#include "records/FltDumpStyles.h"
#include "records/FltOpcode.h"
#include "records/FltRecordOf.h"

#include <cstddef>
#include <cstdint>
#include <map>

class FltDump;
class FltFieldDecoder;

/// The texture layers that a face has above its own texture, and how they are applied.
///
/// Bit n of the mask, the least significant being 0, is layer n; bits 8 to 31 have no effect. Layers that
/// aren't there take no room in the file.
class FltRecordMultitexture : public FltRecordOf<FltRecordMultitexture, AncillaryFltRecord>
{
public:
    using FltRecordOf::FltRecordOf;

    static constexpr int opcode = FltOpcode::multitexture;
    static constexpr std::string_view title = "\n MULTI TEXTURE RECORD ";

    /// Whether layer @p n is there. Any number is taken modulo 32.
    bool hasLayerN(int n) const;

    static constexpr int layerCount = 8;

    struct Layer {
        std::uint16_t texture = 0;
        std::uint16_t effect = 0;
        std::uint16_t mapping = 0;
        std::uint16_t data = 0;
    };

    std::int32_t attributeMask = 0;
    Layer layers[layerCount]; ///< Layer n at entry n; zero where there is none.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("attributeMask", self.attributeMask, dumpAs::pointer);
        for (int n = 0; n < layerCount; ++n) {
            if (!visit.when(self.hasLayerN(n)))
                continue;
            visit.openElement("layers");
            visit.number("layer", n);
            if constexpr (Visitor::dumps)
                (visit.dump << "layer[" << n << "]: ").endLine();
            visit("texture", self.layers[n].texture, "  texture: ");
            visit("effect", self.layers[n].effect, "   effect: ");
            visit("mapping", self.layers[n].mapping, "  mapping: ");
            visit("data", self.layers[n].data, "     data: ");
            visit.close();
        }
    }
};

/// Texture coordinates of the layers of a multitexture, for each vertex of the vertex list before.
///
/// An entry is two float64, u and v; in the list of a morph vertex list it is four: u and v of the first set,
/// u and v of the second. The number of vertices is reckoned with 8 bytes for an entry of two values and 16
/// for one of four, half of what an entry takes. So the entries reach over twice the length of the record's
/// body, and getPropertiesFromData() has to be handed a block of reach() bytes.
///
/// The factory makes no object of this class: records of its opcode stay unknown.
class FltRecordUVList : public AncillaryFltRecord
{
public:
    using AncillaryFltRecord::AncillaryFltRecord;

    static constexpr int opcode = FltOpcode::uvList;
    static constexpr std::string_view title = "\n UV LIST RECORD ";

    int getOpcode() const override { return opcode; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override;
    std::ostream& properties(std::ostream& os) const override;

    /// Reads the list as that of the vertex type which was set before. A record shorter than 8 bytes is left
    /// alone, and one without layers has no entries.
    /// @param data the record's first byte, with reach() bytes there
    void getPropertiesFromData(char* data) override;

    /// Bytes that the decoder reads at the most for a record of @p length bytes, from its first byte on.
    static std::size_t reach(unsigned int length);

    /// Which vertices the list belongs to.
    enum VertexType : std::int32_t {
        plainVertices = 0,
        morphVertices = 1,
    };

    /// Texture coordinates of one vertex in one layer. Both sets of a plain vertex are the same.
    struct UV {
        double uOfFirstSet = 0;
        double uOfSecondSet = 0;
        double vOfFirstSet = 0;
        double vOfSecondSet = 0;
    };

    VertexType getVertexType() const { return vertexType; }

    /// Tells which vertices the list belongs to. It has to be called before getPropertiesFromData().
    void setVertexType(VertexType type) { vertexType = type; }

    /// Whether layer @p n is there. Any number is taken modulo 32.
    bool hasLayerN(int n) const;

    /// Gives the coordinates of a plain vertex. One that the list doesn't hold enters it with zeros.
    /// @return false if there is no such layer or the list isn't one of plain vertices; @p u and @p v stay as
    ///         they are
    bool getUV(int vertex, int layer, double& u, double& v);

    /// Gives the coordinates of a morph vertex, in the order of the file: u and v of the first set, u and v
    /// of the second. One that the list doesn't hold enters it with zeros.
    /// @return false if there is no such layer or the list isn't one of morph vertices; the values stay as
    ///         they are
    bool getMorphUV(int vertex, int layer, double& first, double& second, double& third, double& fourth);

    VertexType vertexType = plainVertices;
    std::int32_t attributeMask = 0;
    std::map<int, std::map<int, UV>> setOfUVs; ///< By the number of the vertex, then of the layer.

    template <class Self, class Visitor>
    static void fields(Self& self, Visitor& visit)
    {
        visit("attributeMask", self.attributeMask, dumpAs::pointer);
        if constexpr (Visitor::decodes)
            self.getUVsFromData(visit);
        if constexpr (Visitor::dumps)
            self.dumpLayers(visit.dump);
        if constexpr (Visitor::lists)
            for (auto const& [vertex, layers] : self.setOfUVs)
                for (auto const& [layer, uv] : layers) {
                    visit.openElement("uvs");
                    visit.number("vertex", vertex);
                    visit.number("layer", layer);
                    visit("uOfFirstSet", uv.uOfFirstSet);
                    visit("vOfFirstSet", uv.vOfFirstSet);
                    visit("uOfSecondSet", uv.uOfSecondSet);
                    visit("vOfSecondSet", uv.vOfSecondSet);
                    visit.close();
                }
    }

private:
    void getUVsFromData(FltFieldDecoder& decoder);
    void dumpLayers(FltDump& dump) const;
};
