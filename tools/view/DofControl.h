#pragma once

#include "loader/FltScene.h"

#include <QWidget>
#include <array>
#include <cstddef>

class QDoubleSpinBox;
class QGridLayout;
class QSlider;

/// Sliders for the nine values of a degree of freedom.
class DofControl : public QWidget
{
    Q_OBJECT

public:
    explicit DofControl(QWidget* parent = nullptr);

    /// @param scene  is moved, and stays the caller's
    /// @param index  of the degree of freedom in the scene's list
    /// @param stored the same as the file has it
    void show(FltScene& scene, std::size_t index, FltDegreeOfFreedom const& stored);

    /// Forgets the scene.
    void clear() { scene = nullptr; }

signals:
    void moved();

private:
    static constexpr std::size_t valueCount = 9;

    /// One value: the number and the slider say the same.
    struct Row {
        QSlider* slider = nullptr;
        QDoubleSpinBox* number = nullptr;
        double least = 0;
        double most = 0;
    };

    void addRow(QGridLayout& layout, std::size_t which);
    void showRow(std::size_t which);
    void takeSlider(std::size_t which, int position);
    void takeNumber(std::size_t which, double value);
    void setAll(std::array<double, valueCount> const& values);
    void apply();

    std::array<Row, valueCount> rows;
    FltScene* scene = nullptr;
    std::size_t joint = 0;
    FltDegreeOfFreedom values; ///< As they are at present.
    FltDegreeOfFreedom stored;
};
