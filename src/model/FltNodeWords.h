#pragma once

#include "model/FltModelTree.h"

#include <string>
#include <vector>

/// What people wrote at the nodes of a hierarchy.
namespace FltNodeWords
{

/// The name of a node: its long id if it has one, else its id, or the name of an external file without its
/// directories and its ending.
std::string nameOf(FltModelTree const& tree, FltModelTree::Number number);

/// The eight characters that a record of the hierarchy begins with; empty for one that has none.
std::string idIn(FltRecordView const& record);

/// The whole text of a long id.
std::string longIdIn(FltRecordView const& record);

/// The comments at a node. Those of a text record say what is written, and count as none.
std::vector<std::string> commentsOf(FltModelTree const& tree, FltModelTree::Number number);

/// What a text record says: it stands in the comment after it.
std::string textOf(FltModelTree const& tree, FltModelTree::Number number);

} // namespace FltNodeWords
