#pragma once

#include "records/FltOpcode.h"

#include <string_view>

/// All that is true of the records of an opcode, in one row.
struct FltOpcodeRow {
    /// What part a record plays in its database.
    enum class Part {
        unknown,
        node,      ///< Stands in the hierarchy, and may have a name and a level of its own.
        component, ///< Stands in the hierarchy too, as something that a node is made of: a face, a mesh.
        corners,   ///< Stands below a component, and says where its corners are.
        ancillary, ///< Says more about the node before it.
        palette,   ///< Belongs to the whole file.
        vertex,    ///< Stands in the vertex palette.
        push,
        pop,
        pushExtension,
        popExtension,
    };

    /// In bytes, opcode and length included.
    struct Lengths {
        unsigned int shortest; ///< Of a record that isn't taken for something else.
        unsigned int longest;
        unsigned int least = 0; ///< What a whole record has at least; 0 for all that its class reads.
    };

    int opcode;
    std::string_view name; ///< "vertex palette"; empty for an opcode that the format keeps to itself.
    Part part;
    Lengths lengths;
    std::string_view absence; ///< What a scene of the exact conversion lacks for it; empty if nothing.
    int finding = 0;          ///< With which a check tells of that, by FltFindingNumber; 0 for none.
    bool isSilent = false; ///< Whether a complete scene lacks nothing where it shows nothing of the record.
};

/// The rows of all opcodes that occur.
namespace FltOpcodeTable
{

/// Begins the absence of a record that has no other name than its opcode, which follows it.
constexpr std::string_view recordsOfOpcode = "records of opcode ";

/// @return null for an opcode that no record has
FltOpcodeRow const* find(int opcode);

/// @return unknown for an opcode that no record has
FltOpcodeRow::Part partOf(int opcode);

/// Whether nothing is missing where the complete conversion shows nothing of a record.
bool isSilent(int opcode);

/// Whether a record of the opcode may have the length; false for opcodes that no record has.
bool isPlausible(int opcode, unsigned int length);

} // namespace FltOpcodeTable
