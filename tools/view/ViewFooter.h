#pragma once

#include <QWidget>

class AxesCross;
class QLabel;
class ScaleBar;
class SceneView;

/// The strip below the picture: axes, scale, what was clicked, and the model's size.
class ViewFooter : public QWidget
{
    Q_OBJECT

public:
    /// @param view lives longer than this
    explicit ViewFooter(SceneView& view, QWidget* parent = nullptr);

    /// @param unit of the scene, "m"; empty for no model
    void setUnit(QString const& unit);

    /// Says the size of what is drawn.
    void refreshSize();

    void say(QString const& text); ///< Of a click.
    QString sizeText() const;      ///< Of what is drawn: "660 × 500 × 149.7 m".

private:
    void followCamera();

    SceneView& view;
    QString unit;
    AxesCross* axes;
    ScaleBar* scale;
    QLabel* label;
    QLabel* size;
};
