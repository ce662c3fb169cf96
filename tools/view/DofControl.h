#pragma once

#include "view/DofTransform.h"

#include <QWidget>
#include <array>
#include <memory>

class QDoubleSpinBox;
class QGridLayout;
class QSlider;
class SoMatrixTransform;

/// Sliders for the nine values of a degree of freedom.
class DofControl : public QWidget
{
    Q_OBJECT

public:
    explicit DofControl(QWidget* parent = nullptr);

    /// @param dof               what the record says
    /// @param mover             is moved; it belongs to the scene
    /// @param isAtCurrentValues whether the scene moves by the stored values already
    void show(DofTransform const& dof, SoMatrixTransform* mover, bool isAtCurrentValues);

    /// Forgets the record and its transformation.
    void clear();

signals:
    void moved();

private:
    /// One value: the number and the slider say the same.
    struct Row {
        QSlider* slider = nullptr;
        QDoubleSpinBox* number = nullptr;
        double least = 0;
        double most = 0;
    };

    void addRow(QGridLayout& layout, std::size_t which);
    void showRow(std::size_t which, DofValue const& value, double shown);
    void takeSlider(std::size_t which, int position);
    void takeNumber(std::size_t which, double value);
    void setAll(DofTransform::Values const& values);
    void apply();

    std::array<Row, DofTransform::valueCount> rows;
    DofTransform::Values values = {};
    std::unique_ptr<DofTransform> dof;
    SoMatrixTransform* mover = nullptr;
    bool startsAtCurrentValues = false;
};
