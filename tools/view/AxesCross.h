#pragma once

#include <Inventor/SbRotation.h>
#include <QPointF>
#include <QWidget>
#include <array>

/// Where the axes of the scene point to in the picture: x red, y green, z blue.
class AxesCross : public QWidget
{
    Q_OBJECT

public:
    explicit AxesCross(QWidget* parent = nullptr);

    /// @param turn of the camera
    void show(SbRotation const& turn);

    /// The ends of x, y and z from the middle, in lengths of an axis; y of the picture goes down.
    static std::array<QPointF, 3> endsOf(SbRotation const& turn);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    SbRotation turn;
};
