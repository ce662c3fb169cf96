#pragma once

#include "loader/FltLoader.h"

#include <QMenu>
#include <string_view>

class QToolBar;
class SceneView;

/// What the picture shows and from where: the menu, with the most used of it in a tool bar.
class ViewMenu : public QMenu
{
    Q_OBJECT

public:
    /// @param view lives longer than this
    /// @param bar  gets buttons
    ViewMenu(SceneView& view, QToolBar& bar, FltLoader const& loader, QWidget* parent);

    QAction* lightAll() const { return lightAction; }
    QAction* play() const { return playAction; }
    QAction* dark() const { return darkAction; } ///< Whether the window is dark.

signals:
    void frameSelectionWanted();
    void showOnlyWanted(); ///< The selection alone.
    void showAllWanted();
    void measuringChanged(bool isOn);
    void timeChosen(FltLoader::TimeOfDay time);

private:
    template <class Slot>
    QAction* add(QString const& text, std::string_view command, Slot slot);
    QAction* addSwitch(QString const& text, std::string_view command);
    void addSides(QToolBar& bar);
    void addStyles();
    void addParts();
    void addLooks();
    void addFieldsOfView();
    void addBackgrounds();

    SceneView& view;
    QAction* lightAction = nullptr;
    QAction* playAction = nullptr;
    QAction* darkAction = nullptr;
};
