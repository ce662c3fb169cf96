#pragma once

#include <QWidget>

class LevelsOfDetail;
class QCheckBox;
class QLabel;
class QSlider;

/// All levels of detail at once: by the distance from the eye, or as they are drawn at a chosen distance.
class LodBar : public QWidget
{
    Q_OBJECT

public:
    explicit LodBar(QWidget* parent = nullptr);

    /// @param levels stays the caller's and has to live until the next call; null for none
    void show(LevelsOfDetail* levels);

    /// The same choice as before, after a scene was loaded again.
    void apply();

signals:
    void changed();

private:
    float distance() const;

    LevelsOfDetail* levels = nullptr;
    QCheckBox* byHand;
    QSlider* slider;
    QLabel* label;
};
