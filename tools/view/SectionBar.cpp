#include "view/SectionBar.h"

#include "view/SectionPlane.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QSlider>

namespace
{

constexpr int sliderSteps = 1000;

} // namespace

SectionBar::SectionBar(SectionPlane& plane, QWidget* parent)
    : QWidget(parent), plane(plane), isOn(new QCheckBox(tr("Section"))), axis(new QComboBox),
      slider(new QSlider(Qt::Horizontal)), isTurned(new QCheckBox(tr("Other side")))
{
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 0, 8, 0);
    for (QWidget* part : {static_cast<QWidget*>(isOn), static_cast<QWidget*>(axis),
                          static_cast<QWidget*>(slider), static_cast<QWidget*>(isTurned)})
        layout->addWidget(part);
    axis->addItems({"x", "y", "z"});
    axis->setAccessibleName(tr("Axis of the section"));
    slider->setRange(0, sliderSteps);
    slider->setValue(sliderSteps / 2);
    slider->setMaximumWidth(160);
    slider->setAccessibleName(tr("Place of the section"));
    isOn->setToolTip(tr("Leave out what lies beyond a plane"));
    isOn->setObjectName("section");
    axis->setObjectName("sectionAxis");
    slider->setObjectName("sectionPlace");
    isTurned->setObjectName("sectionTurned");
    connect(isOn, &QCheckBox::toggled, this, &SectionBar::apply);
    connect(isTurned, &QCheckBox::toggled, this, &SectionBar::apply);
    connect(slider, &QSlider::valueChanged, this, &SectionBar::apply);
    connect(axis, qOverload<int>(&QComboBox::currentIndexChanged), this, &SectionBar::apply);
    apply();
}

void SectionBar::apply()
{
    for (QWidget* part :
         {static_cast<QWidget*>(axis), static_cast<QWidget*>(slider), static_cast<QWidget*>(isTurned)})
        part->setEnabled(isOn->isChecked());
    if (isOn->isChecked())
        plane.cut(static_cast<SectionPlane::Axis>(axis->currentIndex()),
                  static_cast<double>(slider->value()) / sliderSteps, isTurned->isChecked());
    else
        plane.release();
    emit changed();
}
