#include "inspect/FltInventory.h"

#include "inspect/FltInventoryBuilder.h"
#include "records/FltOpcode.h"
#include "records/FltUtils.h"

#include <algorithm>
#include <cstring>

FltInventory::FltInventory(std::string const& path) : fileName(path), reader(path)
{
    FltInventoryBuilder(*this).build();
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
    std::array<double, 3> result{};
    if (!one.isWhole)
        return result;
    char const* const begin = reader.file().data() + one.record;
    bool const isOld = one.opcode <= FltOpcode::oldVertexColorNormal;
    for (std::size_t i = 0; i < 3; ++i) {
        if (isOld) {
            result[i] = static_cast<std::int32_t>(FltUtils::word32At(begin + 4 + 4 * i));
            continue;
        }
        char const* const place = begin + 8 + 8 * i;
        std::uint64_t const word =
            std::uint64_t(FltUtils::word32At(place)) << 32 | FltUtils::word32At(place + 4);
        std::memcpy(&result[i], &word, sizeof word);
    }
    return result;
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
    std::string_view const file = reader.file();
    return file.size() >= enough && file.find('\r') == std::string_view::npos;
}
