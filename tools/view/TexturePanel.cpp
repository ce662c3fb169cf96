#include "view/TexturePanel.h"

#include "view/ListColumns.h"
#include "view/ShownText.h"
#include "view/WindowStyle.h"

#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTreeWidget>

namespace
{

QTreeWidgetItem* makeItem(TextureList::Texture const& texture, std::size_t index, QPalette const& palette)
{
    QString const name = QString::fromStdString(texture.name);
    QString const state = texture.isMissing() ? QStringLiteral("missing")
                                              : QString("%1 x %2").arg(texture.width).arg(texture.height);
    auto* const item = new QTreeWidgetItem({name, state, QString::number(texture.nodes.size())});
    item->setData(0, Qt::UserRole, static_cast<qulonglong>(index));
    item->setToolTip(0, ShownText::toolTip(name));
    if (texture.isMissing())
        for (int column = 0; column < 3; ++column)
            item->setForeground(column, WindowStyle::warningColor(palette));
    return item;
}

} // namespace

TexturePanel::TexturePanel(QWidget* parent)
    : QWidget(parent), tree(new QTreeWidget), find(new QPushButton(tr("Find…"))),
      findAll(new QPushButton(tr("Look in a folder…")))
{
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tree, 1);
    auto* const buttons = new QVBoxLayout;
    buttons->addWidget(find);
    buttons->addWidget(findAll);
    buttons->addStretch();
    layout->addLayout(buttons);
    tree->setHeaderLabels({tr("Texture"), tr("Image"), tr("Nodes")});
    tree->setRootIsDecorated(false);
    ListColumns::fit(*tree, 0);
    tree->setTextElideMode(Qt::ElideLeft); // paths differ at their ends
    tree->setAccessibleName(tr("Textures"));
    tree->setObjectName("textures");
    find->setObjectName("find");
    find->setToolTip(tr("Choose the file of the selected texture; others are looked for beside it"));
    connect(find, &QPushButton::clicked, this, &TexturePanel::askForFile);
    connect(findAll, &QPushButton::clicked, this, &TexturePanel::askForDirectory);
    refresh();
}

void TexturePanel::show(TextureList* newTextures, QString const& directory)
{
    textures = newTextures;
    startDirectory = directory;
    refresh();
}

void TexturePanel::refresh()
{
    tree->clear();
    bool const isAnyMissing = textures != nullptr && textures->missingCount() > 0;
    find->setEnabled(isAnyMissing);
    findAll->setEnabled(isAnyMissing);
    if (textures == nullptr)
        return;
    auto const& list = textures->textures();
    for (bool const isMissing : {true, false})
        for (std::size_t i = 0; i < list.size(); ++i)
            if (list[i].isMissing() == isMissing)
                tree->addTopLevelItem(makeItem(list[i], i, palette()));
    tree->setCurrentItem(tree->topLevelItem(0));
}

void TexturePanel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::PaletteChange)
        refresh(); // its colours are those of the style
    QWidget::changeEvent(event);
}

void TexturePanel::askForFile()
{
    QTreeWidgetItem const* const item = tree->currentItem();
    if (item == nullptr)
        return;
    auto const index = static_cast<std::size_t>(item->data(0, Qt::UserRole).toULongLong());
    QString const path = QFileDialog::getOpenFileName(
        this, ShownText::title(tr("The image of %1").arg(item->text(0))), startDirectory);
    if (path.isEmpty())
        return;
    if (!textures->setImage(index, path.toStdString())) {
        ShownText::tell(this, QMessageBox::Warning, tr("%1 can't be read as an image.").arg(path));
        return;
    }
    findIn(QFileInfo(path).path());
    emit found(QFileInfo(path).path());
}

void TexturePanel::askForDirectory()
{
    QString const directory =
        QFileDialog::getExistingDirectory(this, tr("Where the textures are"), startDirectory);
    if (directory.isEmpty())
        return;
    if (findIn(directory) == 0)
        ShownText::tell(this, QMessageBox::Information,
                        tr("None of the missing textures is in %1.").arg(directory));
}

int TexturePanel::findIn(QString const& directory)
{
    int const count = textures != nullptr ? textures->findIn(directory.toStdString()) : 0;
    startDirectory = directory;
    refresh();
    if (count > 0)
        emit found(directory);
    return count;
}
