#pragma once

#include <QWidget>

/// How long a round number of metres is in the picture, at the distance of what the camera turns about.
class ScaleBar : public QWidget
{
    Q_OBJECT

public:
    explicit ScaleBar(QWidget* parent = nullptr);

    /// @param length of one pixel, in units of the scene; 0 for nothing to be shown
    /// @param unit   of the scene, "m"
    void show(double length, QString const& unit);

    /// The longest 1, 2 or 5 times a power of ten that isn't longer than this; 0 if there is none.
    static double roundLength(double longest);

    QString text() const; ///< "20 m"; empty for nothing.

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    double lengthOfPixel = 0;
    QString unitName;
};
