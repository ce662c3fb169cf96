#pragma once

#include <Inventor/SbBox3f.h>
#include <Inventor/SbVec3f.h>
#include <QImage>
#include <QPoint>
#include <QWidget>
#include <memory>

class SettledPicture;
class SoLightModel;
class SoPath;
class SoSeparator;
class SoQtExaminerViewer;
class SoSwitch;

/// The picture: an examiner with the scene, the box around what is selected, and normals.
///
/// Dragging turns, moves and zooms; a click that doesn't drag picks.
class SceneView : public QWidget
{
    Q_OBJECT

public:
    enum class Style { shaded, edges, lines, points, untextured };
    enum class Side { corner, front, right, top };

    explicit SceneView(QWidget* parent = nullptr);
    ~SceneView() override;

    /// Shows a scene. @param keepCamera whether to look from where the last one was looked at
    void setScene(SoSeparator* scene, bool keepCamera);

    void setStyle(Style style);

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

    /// What is seen, without the rest of the window.
    QImage picture();

    /// Where the picture is in this widget's window.
    QPoint pictureOrigin() const;

    static constexpr char const* pictureName = "picture"; ///< Of the widget for the picture, for tests.

signals:
    /// @param path from the scene's root; null for a click into the empty. Lives until the slots return.
    void picked(SoPath* path);
    void pickedTwice(SoPath* path);

private:
    static int takeEvent(void* view, class QEvent* event);
    void takeMouseEvent(class QMouseEvent const& event);
    SoPath* pick(QPoint const& place) const;
    void frame(SbBox3f const& box);
    SbBox3f boxOf(SoPath* path) const;

    std::unique_ptr<SoQtExaminerViewer> viewer;
    std::unique_ptr<SettledPicture> settled;
    SoSeparator* top;
    SoLightModel* lightModel; ///< Of all that stands in the holder, if anything.
    SoSeparator* holder;
    SoSeparator* overlay;
    SoSwitch* normals;
    SoPath* selected = nullptr;
    QPoint pressedAt;
    bool hasCamera = false;
};
