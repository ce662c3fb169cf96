#include "view/ControlPanel.h"

#include "view/DofControl.h"
#include "view/LoadedScene.h"
#include "view/LodControl.h"
#include "view/SceneTreeModel.h"
#include "view/SwitchControl.h"

#include <Inventor/nodes/SoLOD.h>
#include <QLabel>

ControlPanel::ControlPanel(QWidget* parent)
    : QStackedWidget(parent),
      nothing(new QLabel(tr("Select a degree of freedom, a switch or a level of detail to set it by hand."))),
      dof(new DofControl), switches(new SwitchControl), lod(new LodControl)
{
    nothing->setWordWrap(true);
    nothing->setMargin(8);
    nothing->setAlignment(Qt::AlignTop);
    for (QWidget* page : {static_cast<QWidget*>(nothing), static_cast<QWidget*>(dof),
                          static_cast<QWidget*>(switches), static_cast<QWidget*>(lod)})
        addWidget(page);
    connect(dof, &DofControl::moved, this, &ControlPanel::changed);
    connect(switches, &SwitchControl::changed, this, &ControlPanel::changed);
    connect(lod, &LodControl::changed, this, &ControlPanel::changed);
}

void ControlPanel::clear()
{
    dof->clear();
    switches->clear();
    lod->clear();
    setCurrentWidget(nothing);
}

void ControlPanel::show(LoadedScene& scene, SceneTreeModel const& tree, QModelIndex const& index)
{
    clear();
    static_cast<void>(showDof(scene, tree, index) || showSwitch(scene, tree, index) ||
                      showLod(scene, tree, index));
}

bool ControlPanel::showDof(LoadedScene& scene, SceneTreeModel const& tree, QModelIndex const& index)
{
    SoNode const* const node = tree.node(index);
    auto const joint = node != nullptr ? scene.scene.degreeOfFreedomOf(*node) : std::nullopt;
    if (!joint)
        return false;
    dof->show(scene.scene, *joint, scene.storedJoints.at(*joint));
    setCurrentWidget(dof);
    return true;
}

bool ControlPanel::showSwitch(LoadedScene& scene, SceneTreeModel const& tree, QModelIndex const& index)
{
    SoNode* const node = tree.node(index);
    auto const choice = node != nullptr ? scene.scene.switchOf(*node) : std::nullopt;
    if (!choice)
        return false;
    switches->show(scene.scene, *choice, *static_cast<SoGroup*>(node),
                   scene.storedSwitches.at(*choice).currentMask);
    setCurrentWidget(switches);
    return true;
}

bool ControlPanel::showLod(LoadedScene& scene, SceneTreeModel const& tree, QModelIndex const& index)
{
    // The levels of one thing stand below the same node, and choosing one means choosing among all.
    for (SoNode* const node : {tree.node(index), tree.node(index.parent())})
        if (node != nullptr && node->isOfType(SoLOD::getClassTypeId())) {
            lod->show(&scene.levelsOfDetail, static_cast<SoLOD*>(node));
            setCurrentWidget(lod);
            return true;
        }
    return false;
}
