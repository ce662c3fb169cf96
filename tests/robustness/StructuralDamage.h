#pragma once

#include "robustness/RandomValues.h"

#include <string>

/// Breaks well-formed databases in the ways in which the structure of one can break.
namespace StructuralDamage
{

/// A database with one to four of these: a record left out, doubled, moved, of another length, with a byte
/// changed or a word at its limits, a Push or Pop too many, bytes of no record, the end cut off.
std::string damaged(std::string const& database, RandomValues& random);

} // namespace StructuralDamage
