#pragma once

#include "loader/FltScene.h"

#include <cstdint>
#include <map>
#include <vector>

/// Names for what a scene doesn't show.
namespace FltOmissionKinds
{

/// What the exact conversion leaves out.
/// @param records how many records there are of each opcode
std::vector<FltOmission> ofExactConversion(std::map<int, std::uint64_t> const& records);

} // namespace FltOmissionKinds
