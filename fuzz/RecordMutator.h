#pragma once

#include <cstddef>
#include <cstdint>

/// Changes a database in the way that its records suggest: records are left out, doubled, exchanged, put in
/// from a catalogue of all kinds, given another opcode or another length, or changed inside with the length
/// kept right.
/// @param data a database, changed in place
/// @param size of it; @p room is there
/// @return the new size
std::size_t mutateRecords(std::uint8_t* data, std::size_t size, std::size_t room, unsigned seed);
