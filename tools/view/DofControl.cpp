#include "view/DofControl.h"

#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <algorithm>
#include <cmath>

namespace
{

constexpr int sliderSteps = 1000;
constexpr double farthestNumber = 1e9;

constexpr char const* names[] = {"x", "y", "z", "pitch", "roll", "yaw", "x scale", "y scale", "z scale"};

bool isAngle(std::size_t which)
{
    return which >= 3 && which < 6;
}

bool isScale(std::size_t which)
{
    return which >= 6;
}

/// The range of one of the nine values, in the order of their names.
FltDegreeOfFreedom::Range& rangeOf(FltDegreeOfFreedom& joint, std::size_t which)
{
    FltDegreeOfFreedom::Range* const turns[] = {&joint.pitch, &joint.roll, &joint.yaw};
    return isScale(which)   ? joint.scale[which - 6]
           : isAngle(which) ? *turns[which - 3]
                            : joint.translation[which];
}

/// A scale of 0 counts as 1.
double currentOf(FltDegreeOfFreedom& joint, std::size_t which)
{
    double const current = rangeOf(joint, which).current;
    return isScale(which) && current == 0 ? 1 : current;
}

/// What a slider covers: the limits where there are any, else a range around the stored value that suits its
/// kind.
void chooseRange(FltDegreeOfFreedom& stored, std::size_t which, double& least, double& most)
{
    FltDegreeOfFreedom::Range const& range = rangeOf(stored, which);
    least = std::min(range.minimum, range.maximum);
    most = std::max(range.minimum, range.maximum);
    if (most > least && std::isfinite(most - least))
        return;
    double const current = currentOf(stored, which);
    double const reach = isAngle(which) ? 180 : std::max(10.0, 2 * std::abs(current));
    least = isScale(which) ? 0.1 : current - reach;
    most = isScale(which) ? std::max(4.0, 2 * current) : current + reach;
}

} // namespace

DofControl::DofControl(QWidget* parent) : QWidget(parent)
{
    auto* const layout = new QGridLayout(this);
    for (std::size_t i = 0; i < rows.size(); ++i)
        addRow(*layout, i);
    auto* const stored = new QPushButton(tr("As stored"));
    auto* const neutral = new QPushButton(tr("Neutral"));
    stored->setToolTip(tr("Back to the values in the file"));
    neutral->setToolTip(tr("Not moved, not turned, not scaled: the points as they are stored"));
    stored->setObjectName("stored");
    neutral->setObjectName("neutral");
    layout->addWidget(stored, static_cast<int>(rows.size()), 1);
    layout->addWidget(neutral, static_cast<int>(rows.size()), 2);
    layout->setRowStretch(static_cast<int>(rows.size()) + 1, 1);
    connect(stored, &QPushButton::clicked, this, [this] {
        std::array<double, valueCount> all;
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i] = currentOf(this->stored, i);
        setAll(all);
    });
    connect(neutral, &QPushButton::clicked, this, [this] { setAll({0, 0, 0, 0, 0, 0, 1, 1, 1}); });
}

void DofControl::addRow(QGridLayout& layout, std::size_t which)
{
    Row& row = rows[which];
    auto* const label = new QLabel(names[which]);
    row.slider = new QSlider(Qt::Horizontal);
    row.slider->setRange(0, sliderSteps);
    row.slider->setAccessibleName(names[which]);
    row.slider->setObjectName(QString("slider %1").arg(names[which]));
    row.number = new QDoubleSpinBox;
    row.number->setRange(-farthestNumber, farthestNumber);
    row.number->setDecimals(3);
    row.number->setAccessibleName(names[which]);
    row.number->setObjectName(QString("number %1").arg(names[which]));
    int const line = static_cast<int>(which);
    layout.addWidget(label, line, 0);
    layout.addWidget(row.slider, line, 1);
    layout.addWidget(row.number, line, 2);
    connect(row.slider, &QSlider::valueChanged, this, [this, which](int at) { takeSlider(which, at); });
    connect(row.number, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            [this, which](double value) { takeNumber(which, value); });
}

void DofControl::show(FltScene& newScene, std::size_t index, FltDegreeOfFreedom const& newStored)
{
    scene = &newScene;
    joint = index;
    values = scene->degreesOfFreedom().at(index);
    stored = newStored;
    for (std::size_t i = 0; i < rows.size(); ++i)
        showRow(i);
}

void DofControl::showRow(std::size_t which)
{
    Row& row = rows[which];
    FltDegreeOfFreedom::Range const& range = rangeOf(stored, which);
    double const shown = currentOf(values, which);
    QSignalBlocker const noNumber(row.number);
    chooseRange(stored, which, row.least, row.most);
    row.number->setSuffix(isAngle(which) ? "°" : "");
    row.number->setSingleStep(range.step > 0 && std::isfinite(range.step) ? range.step
                                                                          : (row.most - row.least) / 100);
    row.number->setValue(shown);
    bool const isFixed = range.isLimited && !(range.minimum < range.maximum);
    row.slider->setEnabled(!isFixed);
    row.number->setEnabled(!isFixed);
    QString const limits =
        range.isLimited ? tr("limited to %1 … %2").arg(range.minimum).arg(range.maximum) : tr("not limited");
    row.slider->setToolTip(limits);
    row.number->setToolTip(limits);
    QSignalBlocker const noSlider(row.slider);
    row.slider->setValue(static_cast<int>(
        std::lround(std::clamp((shown - row.least) / (row.most - row.least), 0.0, 1.0) * sliderSteps)));
}

void DofControl::takeSlider(std::size_t which, int position)
{
    Row& row = rows[which];
    double const value = row.least + (row.most - row.least) * position / sliderSteps;
    QSignalBlocker const noNumber(row.number);
    row.number->setValue(value);
    rangeOf(values, which).current = value;
    apply();
}

void DofControl::takeNumber(std::size_t which, double value)
{
    if (scene == nullptr)
        return;
    rangeOf(values, which).current = value;
    showRow(which);
    apply();
}

void DofControl::setAll(std::array<double, valueCount> const& newValues)
{
    if (scene == nullptr)
        return;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        rangeOf(values, i).current = newValues[i];
        showRow(i);
    }
    apply();
}

void DofControl::apply()
{
    if (scene != nullptr && scene->move(joint, values))
        emit moved();
}
