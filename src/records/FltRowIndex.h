#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

/// Finds the row of an opcode in a table whose rows stand in the order of their opcodes.
/// @tparam highest the opcode of the last row
template <int highest, class Row, std::size_t count>
class FltRowIndex
{
public:
    static_assert(count <= INT8_MAX, "positions of rows fit into a byte");

    /// @param rows have to live as long as the index
    constexpr explicit FltRowIndex(Row const (&rows)[count]) : rows(rows)
    {
        for (std::int8_t& position : positions)
            position = none;
        std::int8_t position = 0;
        for (Row const& row : rows)
            positions[static_cast<std::size_t>(row.opcode)] = position++;
    }

    /// @return null if the table has no row of the opcode
    constexpr Row const* find(int opcode) const
    {
        int const position = positionOf(opcode);
        return position >= 0 ? &rows[position] : nullptr;
    }

    /// Where in the table the row of an opcode stands; a number below zero if it has none.
    constexpr int positionOf(int opcode) const
    {
        return opcode >= 0 && opcode <= highest ? positions[static_cast<std::size_t>(opcode)] : none;
    }

    /// Whether the rows of a table stand in the order of their opcodes, each once.
    static constexpr bool isInOrder(Row const (&rows)[count])
    {
        int before = 0;
        for (Row const& row : rows) {
            if (row.opcode <= before || row.opcode > highest)
                return false;
            before = row.opcode;
        }
        return true;
    }

private:
    static constexpr std::int8_t none = -1;

    Row const (&rows)[count];
    std::array<std::int8_t, highest + 1> positions{};
};
