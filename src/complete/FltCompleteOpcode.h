#pragma once

#include "records/FltOpcode.h"

#include <cstdint>

/// What the complete conversion knows of opcodes.
namespace FltCompleteOpcode
{

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

/// Whether a record of the opcode may have the length; false for opcodes that aren't known.
bool isPlausible(int opcode, unsigned int length);

} // namespace FltCompleteOpcode
