#include "view/LodControl.h"

#include "view/LevelsOfDetail.h"
#include "view/ShownText.h"

#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoLOD.h>
#include <Inventor/nodes/SoLabel.h>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QSignalBlocker>

namespace
{

QString childName(SoNode const& child, int number)
{
    if (child.isOfType(SoLabel::getClassTypeId()) || child.isOfType(SoInfo::getClassTypeId()))
        return QString("%1: nothing").arg(number);
    SbName const name = child.getName();
    QString const shown =
        QString::fromUtf8(name.getLength() > 0 ? name.getString() : child.getTypeId().getName().getString());
    return QString("%1: %2").arg(number).arg(shown);
}

} // namespace

LodControl::LodControl(QWidget* parent) : QWidget(parent), choice(new QComboBox), ranges(ShownText::label())
{
    auto* const layout = new QFormLayout(this);
    layout->addRow(tr("Draw"), choice);
    layout->addRow(tr("Changes at"), ranges);
    choice->setObjectName("level");
    choice->setAccessibleName(tr("Level of detail that is drawn"));
    connect(choice, qOverload<int>(&QComboBox::currentIndexChanged), this, &LodControl::take);
}

void LodControl::show(LevelsOfDetail* newLevels, SoLOD* newLod)
{
    QSignalBlocker const quiet(choice);
    levels = newLevels;
    lod = newLod;
    choice->clear();
    ranges->clear();
    if (lod == nullptr)
        return;
    choice->addItem(tr("by the distance from the eye"));
    for (int i = 0; i < lod->getNumChildren(); ++i)
        choice->addItem(childName(*lod->getChild(i), i));
    choice->setCurrentIndex(levels->forced(*lod) + 1);
    QStringList distances;
    for (float const range : levels->rangesOf(*lod))
        distances << QString::number(range);
    ranges->setText(distances.join(", "));
}

void LodControl::take(int which)
{
    if (lod == nullptr || which < 0)
        return;
    levels->force(*lod, which - 1);
    emit changed();
}
