#pragma once

#include "records/FltOpcode.h"

#include <array>
#include <cstddef>
#include <stdexcept>

/// What is done with the records of each opcode: a row for every opcode that anything is done with.
///
/// A table is a constant, so rows out of order, twice or beyond the last opcode are errors of the compiler.
/// @tparam Handler a pointer to a function
template <class Handler>
class FltDispatchTable
{
public:
    struct Row {
        int opcode;
        Handler handler;
    };

    /// @param rows in the order of their opcodes
    template <std::size_t count>
    constexpr explicit FltDispatchTable(Row const (&rows)[count])
    {
        int previous = 0;
        for (Row const& row : rows) {
            if (row.opcode <= previous || row.opcode > FltOpcode::last)
                throw std::logic_error("the rows must stand in the order of their opcodes");
            handlers[static_cast<std::size_t>(row.opcode)] = row.handler;
            previous = row.opcode;
        }
    }

    /// The handler of an opcode, whatever number that is, or null.
    constexpr Handler find(int opcode) const
    {
        return opcode >= 0 && opcode <= FltOpcode::last ? handlers[static_cast<std::size_t>(opcode)]
                                                        : nullptr;
    }

private:
    std::array<Handler, FltOpcode::last + 1> handlers{};
};
