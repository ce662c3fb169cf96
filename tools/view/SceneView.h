#pragma once

#include <Inventor/SbBox3f.h>
#include <Inventor/SbRotation.h>
#include <Inventor/SbVec3f.h>
#include <QColor>
#include <QImage>
#include <QPoint>
#include <QWidget>
#include <memory>

class SettledPicture;
class SoLightModel;
class SoNodeSensor;
class SoPath;
class SoSeparator;
class SoQtExaminerViewer;
class SoSwitch;

/// The picture: an examiner with the scene, the box around what is selected, and normals.
///
/// Dragging turns, moves and zooms, or looks around; a click that doesn't drag picks.
class SceneView : public QWidget
{
    Q_OBJECT

public:
    enum class Style { shaded, edges, lines, points, untextured };
    enum class Side { corner, front, right, top, back, left, bottom };

    explicit SceneView(QWidget* parent = nullptr);
    ~SceneView() override;

    /// Shows a scene. @param keepCamera whether to look from where the last one was looked at
    void setScene(SoSeparator* scene, bool keepCamera);

    void setStyle(Style newStyle);

    /// Looks at the whole scene from a side; z is up.
    void lookFrom(Side side);

    /// Brings a part of the scene into the picture, from the same direction. @param path from the scene's
    /// root
    void frame(SoPath* path);
    void frameAll();

    /// Draws a box around a part of the scene. @param path from the scene's root; null for no box
    void select(SoPath* path);

    /// Draws the box anew after the selected part has moved.
    void refreshSelection();

    /// Around the selected part; empty if nothing is selected.
    SbBox3f selectionBox() const;

    void showNormals(bool isShown);

    /// Whether all faces are lit, also those that the database doesn't have lit.
    void lightAll(bool areLit);

    /// Whether a light shines from the eye.
    void setHeadlight(bool isOn);

    void setBackground(QColor const& color);

    /// The angle that the picture's height takes up, in degrees. What the camera turns about keeps its size.
    void setFieldOfView(double degrees);

    /// Whether one walks through the model, with keys and by looking around, instead of turning it.
    void setWalking(bool isOn) { isWalking = isOn; }

    /// Around what is drawn, when all of it was looked at last.
    SbBox3f const& box() const { return drawnBox; }

    /// From where the picture is seen, and how.
    struct Look {
        SbVec3f eye;
        SbVec3f target;     ///< What the camera turns about.
        double fieldOfView; ///< Degrees of the smaller side.
        QSize size;         ///< Of the picture, in pixels.
        QColor background;
        Style style;
    };
    Look look() const;

    SbRotation turn() const; ///< Of the camera.

    /// How long a pixel is, at the distance of what the camera turns about, in units of the scene.
    double lengthOfPixel() const;

    SoSeparator& content() const { return *contentRoot; } ///< The scene, with what acts on it before it.
    SoSeparator& marks() const { return *markRoot; }      ///< For lines of others, drawn with the scene.

    /// What is seen, without the rest of the window.
    QImage picture();

    /// Where the picture is in this widget's window.
    QPoint pictureOrigin() const;

    static constexpr char const* pictureName = "picture"; ///< Of the widget for the picture, for tests.

signals:
    /// @param path from the scene's root; null for a click into the empty. Lives until the slots return.
    void picked(SoPath* path);
    void pickedTwice(SoPath* path);

    /// A place of the scene was clicked.
    void pointed(SbVec3f const& place);

    void cameraChanged();

private:
    static int takeEvent(void* view, class QEvent* event);
    bool takeWalk(QEvent& event);
    SbBox3f measured();
    class SoCamera* camera() const;
    void takeMouseEvent(class QMouseEvent const& event);
    SoPath* pick(QPoint const& place);
    void frame(SbBox3f const& box);
    SbBox3f boxOf(SoPath* path) const;

    std::unique_ptr<SoQtExaminerViewer> viewer;
    std::unique_ptr<SettledPicture> settled;
    SoSeparator* top;
    SoSeparator* contentRoot;
    SoSeparator* markRoot;
    std::unique_ptr<SoNodeSensor> cameraSensor;
    SoLightModel* lightModel; ///< Of all that stands in the holder, if anything.
    SoSeparator* holder;
    SoSeparator* overlay;
    SoSwitch* normals;
    SoPath* selected = nullptr;
    SbBox3f drawnBox;
    QPoint pressedAt;
    QPoint lookedFrom;
    Style style = Style::shaded;
    bool isWalking = false;
    bool hasCamera = false;
};
