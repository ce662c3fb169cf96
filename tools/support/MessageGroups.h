#pragma once

#include "loader/FltMessage.h"

#include <vector>

/// Messages of one cause: they differ in numbers alone.
namespace MessageGroups
{

using Group = std::vector<FltMessage>; ///< At least one, in the order in which they came.

/// The messages by level, file and cause, in the order of the first of each.
std::vector<Group> of(std::vector<FltMessage> const& messages);

/// The first message of a group, with how often all of them came.
FltMessage summaryOf(Group const& group);

} // namespace MessageGroups
