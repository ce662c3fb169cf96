#pragma once

class QTreeView;

/// The columns of lists and trees.
namespace ListColumns
{

/// Gives one column all the room that the others, which are as wide as what they hold, leave.
void fit(QTreeView& tree, int wide);

} // namespace ListColumns
