#pragma once

#include "view/TextureList.h"

#include <QWidget>

class QPushButton;
class QTreeWidget;

/// The textures of the scene, the missing ones first, and a way to find these.
class TexturePanel : public QWidget
{
    Q_OBJECT

public:
    explicit TexturePanel(QWidget* parent = nullptr);

    /// @param textures stays the caller's, and has to live until the next call; null for none
    /// @param directory where the search for a file begins
    void show(TextureList* textures, QString const& directory);

    /// Looks for all missing textures in a directory. @return how many were found
    int findIn(QString const& directory);

signals:
    /// A directory in which a texture was found.
    void found(QString const& directory);

protected:
    void changeEvent(QEvent* event) override;

private:
    void refresh();
    void askForFile();
    void askForDirectory();

    TextureList* textures = nullptr;
    QString startDirectory;
    QTreeWidget* tree;
    QPushButton* find;
    QPushButton* findAll;
};
