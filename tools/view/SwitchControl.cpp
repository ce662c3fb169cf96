#include "view/SwitchControl.h"

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

void setShown(SoSwitch& child, bool isOn)
{
    child.whichChild = isOn ? SO_SWITCH_ALL : SO_SWITCH_NONE;
}

} // namespace

SwitchControl::SwitchControl(QWidget* parent)
    : QWidget(parent), maskChoice(new QComboBox), childList(new QListWidget)
{
    auto* const layout = new QFormLayout(this);
    layout->addRow(tr("Mask"), maskChoice);
    layout->addRow(tr("Children"), childList);
    maskChoice->setObjectName("mask");
    maskChoice->setPlaceholderText(tr("none of them"));
    childList->setObjectName("children");
    connect(maskChoice, qOverload<int>(&QComboBox::currentIndexChanged), this, &SwitchControl::takeMask);
    connect(childList, &QListWidget::itemChanged, this, &SwitchControl::takeChild);
}

void SwitchControl::show(SwitchMasks const& newMasks, std::vector<SoSwitch*> const& newChildren,
                         QStringList const& names)
{
    masks = std::make_unique<SwitchMasks>(newMasks);
    children = newChildren;
    QSignalBlocker const noMask(maskChoice);
    QSignalBlocker const noChild(childList);
    maskChoice->clear();
    for (int i = 0; i < masks->count(); ++i)
        maskChoice->addItem(i == masks->current() ? tr("%1 (current in the file)").arg(i)
                                                  : QString::number(i));
    maskChoice->setCurrentIndex(shownMask());
    childList->clear();
    for (std::size_t i = 0; i < children.size(); ++i) {
        auto* const item = new QListWidgetItem(names.value(static_cast<int>(i)), childList);
        item->setCheckState(isShown(*children[i]) ? Qt::Checked : Qt::Unchecked);
    }
}

void SwitchControl::clear()
{
    masks.reset();
    children.clear();
}

int SwitchControl::shownMask() const
{
    for (int mask = 0; mask < masks->count(); ++mask) {
        bool isSame = true;
        for (std::size_t i = 0; i < children.size() && isSame; ++i)
            isSame = masks->shows(mask, static_cast<int>(i)) == isShown(*children[i]);
        if (isSame)
            return mask;
    }
    return -1;
}

void SwitchControl::takeMask(int mask)
{
    if (masks == nullptr || mask < 0)
        return;
    QSignalBlocker const noChild(childList);
    for (std::size_t i = 0; i < children.size(); ++i) {
        bool const isOn = masks->shows(mask, static_cast<int>(i));
        setShown(*children[i], isOn);
        childList->item(static_cast<int>(i))->setCheckState(isOn ? Qt::Checked : Qt::Unchecked);
    }
    emit changed();
}

void SwitchControl::takeChild(QListWidgetItem* item)
{
    auto const which = static_cast<std::size_t>(childList->row(item));
    if (masks == nullptr || which >= children.size())
        return;
    setShown(*children[which], item->checkState() == Qt::Checked);
    QSignalBlocker const noMask(maskChoice);
    maskChoice->setCurrentIndex(shownMask());
    emit changed();
}
