#include "view/TreeOpening.h"

#include <QTreeView>

void TreeOpening::open(QTreeView& tree)
{
    constexpr int mostRows = 60;
    QAbstractItemModel const& model = *tree.model();
    QModelIndex const root = model.index(0, 0);
    tree.expand(root);
    int const children = model.rowCount(root);
    int rows = children;
    for (int i = 0; i < children && rows < mostRows; ++i) {
        QModelIndex const child = model.index(i, 0, root);
        tree.expand(child);
        rows += model.rowCount(child);
    }
}
