#pragma once

#include <QModelIndex>
#include <QStackedWidget>

class DofControl;
class LoadedScene;
class LodControl;
class QLabel;
class SceneTreeModel;
class SwitchControl;

/// What can be set by hand of the selected node: a degree of freedom, a switch, a level of detail.
class ControlPanel : public QStackedWidget
{
    Q_OBJECT

public:
    explicit ControlPanel(QWidget* parent = nullptr);

    /// @param scene stays the caller's and has to live until the next call
    void show(LoadedScene& scene, SceneTreeModel const& tree, QModelIndex const& index);
    void clear();

    /// Whether there is something to set.
    bool hasControls() const { return currentIndex() != 0; }

signals:
    void changed();

private:
    bool showDof(LoadedScene& scene, SceneTreeModel const& tree, QModelIndex const& index);
    bool showSwitch(LoadedScene& scene, SceneTreeModel const& tree, QModelIndex const& index);
    bool showLod(LoadedScene& scene, SceneTreeModel const& tree, QModelIndex const& index);

    QLabel* nothing;
    DofControl* dof;
    SwitchControl* switches;
    LodControl* lod;
};
