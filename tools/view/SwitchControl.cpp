#include "view/SwitchControl.h"

#include "view/Visibility.h"

#include <Inventor/nodes/SoSwitch.h>
#include <QComboBox>
#include <QFormLayout>
#include <QListWidget>
#include <QSignalBlocker>

namespace
{

bool isShown(SoSwitch const& child)
{
    return child.whichChild.getValue() != SO_SWITCH_NONE;
}

Qt::CheckState stateOf(SoSwitch const& child)
{
    return isShown(child) ? Qt::Checked : Qt::Unchecked;
}

/// The switches around the children of a switch record's node, in the order of the children.
std::vector<SoSwitch*> childrenOf(SoGroup& node)
{
    std::vector<SoSwitch*> children;
    for (int i = 0; i < node.getNumChildren(); ++i) {
        SoNode* const child = Visibility::child(&node, i);
        if (child->isOfType(SoSwitch::getClassTypeId()))
            children.push_back(static_cast<SoSwitch*>(child));
    }
    return children;
}

/// What a child is called: the node of its record stands two below the switch around it.
QString nameOf(SoSwitch const& child, std::size_t number)
{
    SoNode const* node = child.getNumChildren() > 0 ? child.getChild(0) : &child;
    SoGroup const* const group =
        node->isOfType(SoGroup::getClassTypeId()) ? static_cast<SoGroup const*>(node) : nullptr;
    if (node->getName().getLength() == 0 && group != nullptr && group->getNumChildren() == 1)
        node = group->getChild(0);
    SbName const name = node->getName();
    return name.getLength() > 0 ? QString::fromUtf8(name.getString()) : QString("child %1").arg(number);
}

} // namespace

SwitchControl::SwitchControl(QWidget* parent)
    : QWidget(parent), maskChoice(new QComboBox), childList(new QListWidget)
{
    auto* const layout = new QFormLayout(this);
    layout->addRow(tr("Mask"), maskChoice);
    layout->addRow(tr("Children"), childList);
    maskChoice->setObjectName("mask");
    maskChoice->setAccessibleName(tr("Mask of the switch"));
    childList->setAccessibleName(tr("Children of the switch"));
    maskChoice->setPlaceholderText(tr("none of them"));
    childList->setObjectName("children");
    connect(maskChoice, qOverload<int>(&QComboBox::currentIndexChanged), this, &SwitchControl::takeMask);
    connect(childList, &QListWidget::itemChanged, this, &SwitchControl::takeChild);
}

void SwitchControl::show(FltScene& newScene, std::size_t newIndex, SoGroup& node, int stored)
{
    scene = &newScene;
    index = newIndex;
    masks = scene->switches().at(index);
    children = childrenOf(node);
    QSignalBlocker const noMask(maskChoice);
    QSignalBlocker const noChild(childList);
    maskChoice->clear();
    for (int i = 0; i < masks.getMaskCount(); ++i) {
        QString const name = QString::fromStdString(masks.maskNames[static_cast<std::size_t>(i)]);
        QString const text = name.isEmpty() ? QString::number(i) : QString("%1: %2").arg(i).arg(name);
        maskChoice->addItem(i == stored ? tr("%1 (current in the file)").arg(text) : text);
    }
    maskChoice->setCurrentIndex(shownMask());
    childList->clear();
    for (std::size_t i = 0; i < children.size(); ++i)
        (new QListWidgetItem(nameOf(*children[i], i), childList))->setCheckState(stateOf(*children[i]));
}

void SwitchControl::clear()
{
    scene = nullptr;
    children.clear();
}

bool SwitchControl::showsWhatIsShown(int mask) const
{
    for (std::size_t i = 0; i < children.size(); ++i)
        if (masks.shows(mask, i) != isShown(*children[i]))
            return false;
    return true;
}

int SwitchControl::shownMask() const
{
    if (showsWhatIsShown(masks.currentMask) && masks.currentMask < masks.getMaskCount())
        return masks.currentMask;
    for (int mask = 0; mask < masks.getMaskCount(); ++mask)
        if (showsWhatIsShown(mask))
            return mask;
    return -1;
}

void SwitchControl::takeMask(int mask)
{
    if (scene == nullptr || !scene->show(index, mask))
        return;
    masks.currentMask = mask;
    QSignalBlocker const noChild(childList);
    for (std::size_t i = 0; i < children.size(); ++i)
        childList->item(static_cast<int>(i))->setCheckState(stateOf(*children[i]));
    emit changed();
}

void SwitchControl::takeChild(QListWidgetItem* item)
{
    auto const which = static_cast<std::size_t>(childList->row(item));
    if (scene == nullptr || which >= children.size())
        return;
    children[which]->whichChild = item->checkState() == Qt::Checked ? SO_SWITCH_ALL : SO_SWITCH_NONE;
    QSignalBlocker const noMask(maskChoice);
    maskChoice->setCurrentIndex(shownMask());
    emit changed();
}
