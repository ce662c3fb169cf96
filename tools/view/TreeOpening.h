#pragma once

class QTreeView;

namespace TreeOpening
{

/// Opens the first two levels of a tree, as far as that makes no more rows than anybody sees at once.
void open(QTreeView& tree);

} // namespace TreeOpening
