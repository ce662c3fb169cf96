#include "view/ListColumns.h"

#include <QHeaderView>
#include <QTreeView>

void ListColumns::fit(QTreeView& tree, int wide)
{
    QHeaderView& header = *tree.header();
    header.setStretchLastSection(false);
    header.setResizeContentsPrecision(0); // what is in sight: there may be very many rows
    header.setSectionResizeMode(QHeaderView::ResizeToContents);
    header.setSectionResizeMode(wide, QHeaderView::Stretch);
}
