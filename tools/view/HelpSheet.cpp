#include "view/HelpSheet.h"

#include "view/ViewKeys.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QTreeWidget>
#include <QVBoxLayout>

HelpSheet::HelpSheet(QWidget* parent) : QDialog(parent)
{
    setWindowTitle(tr("Keys and mouse"));
    setObjectName("help");
    auto* const table = new QTreeWidget;
    table->setObjectName("keys");
    table->setAccessibleName(windowTitle());
    table->setHeaderLabels({tr("Key or mouse"), tr("What it does")});
    table->setRootIsDecorated(false);
    table->setAlternatingRowColors(true);
    for (ProgramKey const& key : ViewKeys::all())
        new QTreeWidgetItem(table, {QString::fromStdString(key.keys), QString::fromStdString(key.purpose)});
    table->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(table);
    layout->addWidget(buttons);
    resize(640, 620);
}
