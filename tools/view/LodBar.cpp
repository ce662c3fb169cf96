#include "view/LodBar.h"

#include "view/LevelsOfDetail.h"
#include "view/ShownText.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <cmath>

namespace
{

constexpr int sliderSteps = 1000;

} // namespace

LodBar::LodBar(QWidget* parent)
    : QWidget(parent), byHand(new QCheckBox(tr("Levels of detail as from"))),
      slider(new QSlider(Qt::Horizontal)), label(ShownText::label())
{
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 0, 8, 0);
    layout->addWidget(byHand);
    layout->addWidget(slider);
    layout->addWidget(label);
    slider->setRange(0, sliderSteps);
    slider->setMaximumWidth(200);
    slider->setObjectName("lodDistance");
    slider->setAccessibleName(tr("Distance that levels of detail are seen from"));
    byHand->setObjectName("lodByHand");
    byHand->setToolTip(tr("Draw what is seen from a chosen distance, wherever the eye is"));
    label->setMinimumWidth(80);
    connect(byHand, &QCheckBox::toggled, this, &LodBar::apply);
    connect(slider, &QSlider::valueChanged, this, &LodBar::apply);
    show(nullptr);
}

void LodBar::show(LevelsOfDetail* newLevels)
{
    levels = newLevels;
    setEnabled(levels != nullptr && !levels->isEmpty());
    apply();
}

/// The near distances take most of the slider: that is where most changes are.
float LodBar::distance() const
{
    double const part = static_cast<double>(slider->value()) / sliderSteps;
    return levels != nullptr ? static_cast<float>(levels->farthest() * std::pow(part, 3)) : 0;
}

void LodBar::apply()
{
    bool const isByHand = byHand->isChecked() && levels != nullptr;
    slider->setEnabled(isByHand);
    label->setText(isByHand ? QString::number(distance(), 'g', 4) : QString());
    if (levels == nullptr)
        return;
    if (isByHand)
        levels->setDistance(distance());
    else
        levels->followEye();
    emit changed();
}
