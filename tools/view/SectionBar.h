#pragma once

#include <QWidget>

class QCheckBox;
class QComboBox;
class QSlider;
class SectionPlane;

/// Moves the section plane: its axis, how far through the model, and which side is left out.
class SectionBar : public QWidget
{
    Q_OBJECT

public:
    /// @param plane lives longer than this
    explicit SectionBar(SectionPlane& plane, QWidget* parent = nullptr);

    void apply(); ///< The same cut as before, in another scene.

signals:
    void changed();

private:
    SectionPlane& plane;
    QCheckBox* isOn;
    QComboBox* axis;
    QSlider* slider;
    QCheckBox* isTurned;
};
