#include "view/ControlPanel.h"

#include "records/FltOpcode.h"
#include "view/DofControl.h"
#include "view/LoadedScene.h"
#include "view/LodControl.h"
#include "view/SceneTreeModel.h"
#include "view/SwitchControl.h"

#include <Inventor/nodes/SoLOD.h>
#include <Inventor/nodes/SoSwitch.h>
#include <QLabel>
#include <nlohmann/json.hpp>

namespace
{

/// A child's own name stands in the node below the switch that shows or hides it.
QString childName(SoSwitch const& child)
{
    SbName const name = child.getNumChildren() > 0 ? child.getChild(0)->getName() : child.getName();
    return name.getLength() > 0 ? QString::fromUtf8(name.getString()) : QStringLiteral("(no name)");
}

} // namespace

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
    HierarchyRecord const* const record = tree.record(index);
    if (record == nullptr || record->opcode != FltOpcode::dof || scene.moverOf(*record) == nullptr)
        return false;
    auto const fields = scene.records.fieldsOf(*record);
    if (fields.empty())
        return false;
    dof->show(DofTransform(fields.front()["fields"]), scene.moverOf(*record),
              scene.isAtCurrentValues(*record));
    setCurrentWidget(dof);
    return true;
}

bool ControlPanel::showSwitch(LoadedScene& scene, SceneTreeModel const& tree, QModelIndex const& index)
{
    HierarchyRecord const* const record = tree.record(index);
    if (record == nullptr || record->opcode != FltOpcode::switchNode)
        return false;
    auto const fields = scene.records.fieldsOf(*record);
    auto const children = SwitchMasks::childrenOf(*tree.node(index));
    if (fields.empty() || children.empty())
        return false;
    QStringList names;
    for (SoSwitch const* child : children)
        names << childName(*child);
    switches->show(SwitchMasks(fields.front()["fields"]), children, names);
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
