#pragma once

#include "records/FltOpcode.h"

#include <cstdint>

/// Opcodes that only the complete conversion reads, and what it knows of all of them.
namespace FltCompleteOpcode
{

enum : int {
    continuation = 23,
    mesh = 84,
    localVertexPool = 85,
    meshPrimitive = 86,
    roadSegment = 87,
    roadZone = 88,
    roadPath = 92,
    cat = 115,
    catData = 116,
    curve = 126,
    roadConstruction = 127,
    lightPointAppearancePalette = 128,
    lightPointAnimationPalette = 129,
    indexedLightPoint = 130,
    lightPointSystem = 131,
    indexedString = 132,
    shaderPalette = 133,
    lastKnown = 150,
};

/// What part a record plays.
enum class Role {
    unknown,
    node,      ///< Stands in the hierarchy, and may have a level of its own.
    ancillary, ///< Says more about the node before it.
    palette,   ///< Belongs to the whole file.
    vertex,    ///< Stands in the vertex palette.
    push,
    pop,
    pushExtension,
    popExtension,
};

Role roleOf(int opcode);

/// The name of an opcode for people; "unknown opcode" for one that has none.
char const* nameOf(int opcode);

/// Whether a record of the opcode may have the length; false for opcodes that aren't known.
bool isPlausible(int opcode, unsigned int length);

} // namespace FltCompleteOpcode
