#include "inspect/FltCheckPalettes.h"

#include "messages/FltFindingNumber.h"
#include "records/FltOpcode.h"

#include <string>

namespace Number = FltFindingNumber;

void FltCheckPalettes::check()
{
    for (FltInventory::Face const& face : inventory.faces)
        checkSurface(face, FltOpcode::face);
    for (FltInventory::Mesh const& mesh : inventory.meshes)
        checkSurface(mesh, FltOpcode::mesh);
    tellMappings();
    for (FltInventory::Instance const& light : inventory.lightSources)
        if (inventory.lights.count(light.number) == 0)
            findings.add(Number::undefinedLight, inventory.nodes[light.node].offset, FltOpcode::lightSource,
                         light.node, "light source " + std::to_string(light.number));
    checkRepetitions(inventory.textures, "texture");
    checkRepetitions(inventory.materials, "material");
    checkRepetitions(inventory.lineStyles, "line style");
    checkRepetitions(inventory.textureMappings, "texture mapping");
    checkRepetitions(inventory.lights, "light source");
}

void FltCheckPalettes::checkSurface(FltInventory::Surface const& surface, int opcode)
{
    auto const check = [&](int number, FltInventory::Palette const& palette, int index, char const* what) {
        if (index >= 0 && palette.count(index) == 0)
            findings.add(number, surface.offset, opcode, surface.node, what + std::to_string(index));
    };
    check(Number::undefinedTexture, inventory.textures, surface.texture, "texture ");
    check(Number::undefinedTexture, inventory.textures, surface.detailTexture, "detail texture ");
    check(Number::undefinedMaterial, inventory.materials, surface.material, "material ");
    if (surface.mapping >= 0 && inventory.textureMappings.count(surface.mapping) == 0)
        takeMapping(surface, opcode);
    if (surface.lineStyle != 0) // 0 is the usual line
        check(Number::undefinedLineStyle, inventory.lineStyles, surface.lineStyle, "line style ");
    constexpr int firstRevisionOfIndices = 1500;
    constexpr int colors = 1024 * 128;
    bool const takesColorFromPalette = inventory.header.revision >= firstRevisionOfIndices &&
                                       !surface.hasPackedColor() && !surface.hasNoColor() &&
                                       surface.color != -1;
    if (takesColorFromPalette && (!inventory.hasColorPalette || surface.color < 0 || surface.color >= colors))
        findings.add(Number::undefinedColor, surface.offset, opcode, surface.node,
                     inventory.hasColorPalette ? "colour " + std::to_string(surface.color)
                                               : "there is no colour palette");
}

void FltCheckPalettes::takeMapping(FltInventory::Surface const& surface, int opcode)
{
    auto const [entry, isNew] =
        undefinedMappings.try_emplace(surface.texture, Mappings{surface.offset, opcode, surface.mapping});
    entry->second.hasOthers = entry->second.hasOthers || entry->second.mapping != surface.mapping;
    ++entry->second.count;
}

/// One for each texture: a mapping says how a texture lies on faces.
void FltCheckPalettes::tellMappings()
{
    for (auto const& [index, mappings] : undefinedMappings) {
        auto const texture = inventory.textures.find(index);
        std::string const name = index < 0                             ? "faces without a texture"
                                 : texture != inventory.textures.end() ? quoted(texture->second.name)
                                                                       : "texture " + std::to_string(index);
        findings.addHere(Number::undefinedMapping, static_cast<std::int64_t>(mappings.offset),
                         mappings.opcode,
                         name + ": texture mapping " + std::to_string(mappings.mapping) +
                             (mappings.hasOthers ? " and others" : ""),
                         mappings.count);
    }
}

void FltCheckPalettes::checkRepetitions(FltInventory::Palette const& palette, char const* what)
{
    for (auto const& [index, entry] : palette)
        if (entry.repetition != 0 && !transfer.hasTrace(index))
            findings.addHere(Number::repeatedIndex, static_cast<std::int64_t>(entry.repetition), 0,
                             std::string(what) + " " + std::to_string(index));
}
