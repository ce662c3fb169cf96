#include "view/DofControl.h"

#include <Inventor/nodes/SoMatrixTransform.h>
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

/// What a slider covers: the limits where there are any, else a range around the stored value that suits its
/// kind.
void chooseRange(DofValue const& value, std::size_t which, double& least, double& most)
{
    least = std::min(value.least, value.most);
    most = std::max(value.least, value.most);
    if (most > least && std::isfinite(most - least))
        return;
    bool const isAngle = which >= 3 && which < 6;
    double const current = std::isfinite(value.current) ? value.current : 0;
    double const reach = isAngle ? 180 : value.isScale ? 0 : std::max(10.0, 2 * std::abs(current));
    least = value.isScale ? 0.1 : current - reach;
    most = value.isScale ? std::max(4.0, 2 * current) : current + reach;
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
        if (dof != nullptr)
            setAll(dof->current());
    });
    connect(neutral, &QPushButton::clicked, this, [this] { setAll({0, 0, 0, 0, 0, 0, 1, 1, 1}); });
}

void DofControl::addRow(QGridLayout& layout, std::size_t which)
{
    static constexpr char const* names[] = {"x",   "y",       "z",       "pitch",  "roll",
                                            "yaw", "x scale", "y scale", "z scale"};
    Row& row = rows[which];
    auto* const label = new QLabel(names[which]);
    row.slider = new QSlider(Qt::Horizontal);
    row.slider->setRange(0, sliderSteps);
    row.slider->setObjectName(QString("slider %1").arg(names[which]));
    row.number = new QDoubleSpinBox;
    row.number->setRange(-farthestNumber, farthestNumber);
    row.number->setDecimals(3);
    row.number->setObjectName(QString("number %1").arg(names[which]));
    int const line = static_cast<int>(which);
    layout.addWidget(label, line, 0);
    layout.addWidget(row.slider, line, 1);
    layout.addWidget(row.number, line, 2);
    connect(row.slider, &QSlider::valueChanged, this, [this, which](int at) { takeSlider(which, at); });
    connect(row.number, qOverload<double>(&QDoubleSpinBox::valueChanged), this,
            [this, which](double value) { takeNumber(which, value); });
}

void DofControl::show(DofTransform const& newDof, SoMatrixTransform* newMover, bool isAtCurrentValues)
{
    dof = std::make_unique<DofTransform>(newDof);
    mover = newMover;
    startsAtCurrentValues = isAtCurrentValues;
    values = dof->current();
    for (std::size_t i = 0; i < rows.size(); ++i)
        showRow(i, dof->values()[i], values[i]);
}

void DofControl::clear()
{
    dof.reset();
    mover = nullptr;
}

void DofControl::showRow(std::size_t which, DofValue const& value, double shown)
{
    Row& row = rows[which];
    QSignalBlocker const noNumber(row.number);
    chooseRange(value, which, row.least, row.most);
    row.number->setSuffix(value.unit);
    row.number->setSingleStep(value.step > 0 && std::isfinite(value.step) ? value.step
                                                                          : (row.most - row.least) / 100);
    row.number->setValue(shown);
    bool const isFixed = value.isLimited && !(value.least < value.most);
    row.slider->setEnabled(!isFixed);
    row.number->setEnabled(!isFixed);
    QString const limits =
        value.isLimited ? tr("limited to %1 … %2").arg(value.least).arg(value.most) : tr("not limited");
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
    values[which] = value;
    apply();
}

void DofControl::takeNumber(std::size_t which, double value)
{
    if (dof == nullptr)
        return;
    values[which] = value;
    showRow(which, dof->values()[which], value);
    apply();
}

void DofControl::setAll(DofTransform::Values const& newValues)
{
    if (dof == nullptr)
        return;
    values = newValues;
    for (std::size_t i = 0; i < rows.size(); ++i)
        showRow(i, dof->values()[i], values[i]);
    apply();
}

void DofControl::apply()
{
    if (mover == nullptr || dof == nullptr)
        return;
    SbMatrix matrix = dof->matrix(values);
    if (startsAtCurrentValues)
        matrix.multLeft(dof->matrix(dof->current()).inverse());
    mover->matrix = matrix;
    emit moved();
}
