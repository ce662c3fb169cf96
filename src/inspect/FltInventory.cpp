#include "inspect/FltInventory.h"

#include "inspect/FltInventoryBuilder.h"
#include "model/FltRecordView.h"
#include "records/FltOpcode.h"
#include "records/FltRecordVertex.h"

#include <algorithm>

namespace
{

/// All forms of the palette begin with the coordinates, and all old ones too.
template <class Record>
std::array<double, 3> positionIn(FltRecordView const& record)
{
    Record vertex(0);
    record.decodeFieldsTo(vertex);
    return {static_cast<double>(vertex.Xcoordinate), static_cast<double>(vertex.Ycoordinate),
            static_cast<double>(vertex.Zcoordinate)};
}

} // namespace

FltInventory::FltInventory(std::string const& path, Offsets rule) : fileName(path), scan(path)
{
    FltInventoryBuilder(*this, rule).build();
}

bool FltInventory::Switch::shows(int mask, std::uint32_t child) const
{
    if (mask < 0 || wordsPerMask <= 0 || child / 32 >= static_cast<std::uint32_t>(wordsPerMask))
        return false;
    std::size_t const word =
        static_cast<std::size_t>(mask) * static_cast<std::size_t>(wordsPerMask) + child / 32;
    return word < words.size() && (words[word] >> child % 32 & 1) != 0;
}

char const* FltInventory::DegreeOfFreedom::nameOf(std::size_t range)
{
    static constexpr char const* names[] = {"x",   "y",       "z",       "pitch",  "roll",
                                            "yaw", "x scale", "y scale", "z scale"};
    return names[range];
}

std::array<double, 3> FltInventory::position(std::uint32_t vertex) const
{
    Vertex const& one = vertices[vertex];
    std::string_view const rest = scan.file().substr(one.offset);
    auto const room = static_cast<std::uint32_t>(std::min<std::size_t>(rest.size(), UINT16_MAX));
    FltRecordView const record{rest.data(), room, one.opcode, one.offset};
    return one.opcode <= FltOpcode::oldVertexColorNormal ? positionIn<FltRecordOldVertex>(record)
                                                         : positionIn<FltRecordVertexColor>(record);
}

std::uint64_t FltInventory::triangles() const
{
    std::uint64_t count = 0;
    for (Face const& face : faces)
        count += face.vertexCount > 2 ? face.vertexCount - 2 : 0;
    for (Mesh const& mesh : meshes)
        for (Primitive const& primitive : mesh.primitives)
            count += primitive.indexCount > 2 ? primitive.indexCount - 2 : 0;
    return count;
}

std::string FltInventory::pathOf(std::uint32_t node) const
{
    constexpr std::size_t mostNames = 32;
    std::vector<std::string const*> names;
    for (; node != none && node != 0 && names.size() < mostNames; node = nodes[node].parent)
        names.push_back(&nodes[node].name);
    std::string path = node != none && node != 0 ? "..." : "";
    for (auto name = names.rbegin(); name != names.rend(); ++name)
        path += (path.empty() ? "" : "/") + **name;
    return path;
}

bool FltInventory::lacksCarriageReturns() const
{
    // Some 16 are to be expected by then even where most bytes are zero.
    constexpr std::size_t enough = 4096;
    std::string_view const file = scan.file();
    return file.size() >= enough && file.find('\r') == std::string_view::npos;
}
