#include "loader/FltOmissionKinds.h"

#include "records/FltOpcode.h"
#include "records/FltRecordTable.h"

#include <string>

namespace
{

struct Row {
    int opcode;
    char const* kind;
};

/// What has a class, but no place in a scene of the exact conversion.
constexpr Row leftOut[] = {
    {FltOpcode::multitexture, "further texture layers"},
    {FltOpcode::eyePointTrackPlane, "eye points and track planes"},
    {FltOpcode::morphVertexList, "morph vertex lists"},
    {FltOpcode::sound, "sounds"},
    {FltOpcode::text, "texts"},
    {FltOpcode::extensionAttribute, "extension attributes"},
    {FltOpcode::lightSource, "light sources"},
    {FltOpcode::lightPoint, "light points"},
};

/// What has no class; others are called by their opcode.
constexpr Row unknown[] = {
    {FltOpcode::continuation, "continuations"},
    {FltOpcode::uvList, "coordinates of further texture layers"},
    {FltOpcode::separatingPlane, "binary separating planes"},
    {FltOpcode::mesh, "meshes"},
    {FltOpcode::roadSegment, "roads"},
    {FltOpcode::cat, "CATs"},
    {FltOpcode::roadConstruction, "roads"},
    {FltOpcode::indexedLightPoint, "indexed light points"},
    {FltOpcode::lightPointSystem, "light point systems"},
    {FltOpcode::shaderPalette, "shaders"},
};

template <std::size_t size>
char const* find(Row const (&rows)[size], int opcode)
{
    for (Row const& row : rows)
        if (row.opcode == opcode)
            return row.kind;
    return nullptr;
}

/// What stands with a mesh, and isn't counted beside it; and what has its effect in other records.
bool isPartOfAnother(int opcode)
{
    return opcode == FltOpcode::localVertexPool || opcode == FltOpcode::meshPrimitive;
}

} // namespace

std::vector<FltOmission> FltOmissionKinds::ofExactConversion(std::map<int, std::uint64_t> const& records)
{
    std::map<std::string, std::uint64_t> kinds;
    for (auto const& [opcode, count] : records) {
        char const* kind = find(leftOut, opcode);
        if (kind == nullptr && FltRecordTable::find(opcode) != nullptr)
            continue;
        if (kind == nullptr)
            kind = find(unknown, opcode);
        if (kind != nullptr)
            kinds[kind] += count;
        else if (!isPartOfAnother(opcode))
            kinds["records of opcode " + std::to_string(opcode)] += count;
    }
    std::vector<FltOmission> omissions;
    omissions.reserve(kinds.size());
    for (auto const& [kind, count] : kinds)
        omissions.push_back({kind, count});
    return omissions;
}
