#include "view/SceneView.h"

#include "view/CameraFit.h"
#include "view/DrawnBox.h"
#include "view/NormalLines.h"
#include "view/SelectionBox.h"
#include "view/SettledPicture.h"

#include <Inventor/Qt/SoQt.h>
#include <Inventor/Qt/viewers/SoQtExaminerViewer.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSwitch.h>
#include <QGLWidget>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <cmath>

namespace
{

constexpr int clickSlack = 4; ///< Pixels that a click may drag.

float radians(float degrees)
{
    return degrees * static_cast<float>(M_PI / 180);
}

/// The turn of a camera that looks from a compass direction and a height above the horizon, z up.
SbRotation viewFrom(float azimuth, float elevation)
{
    return SbRotation(SbVec3f(1, 0, 0), radians(90 - elevation)) *
           SbRotation(SbVec3f(0, 0, 1), radians(180 - azimuth));
}

SbRotation viewFrom(SceneView::Side side)
{
    switch (side) {
    case SceneView::Side::front:
        return viewFrom(180, 0);
    case SceneView::Side::right:
        return viewFrom(90, 0);
    case SceneView::Side::top:
        return viewFrom(180, 90);
    case SceneView::Side::corner:
        break;
    }
    return viewFrom(150, 25);
}

SoQtViewer::DrawStyle drawStyle(SceneView::Style style)
{
    switch (style) {
    case SceneView::Style::edges:
        return SoQtViewer::VIEW_WIREFRAME_OVERLAY;
    case SceneView::Style::lines:
        return SoQtViewer::VIEW_LINE;
    case SceneView::Style::points:
        return SoQtViewer::VIEW_POINT;
    case SceneView::Style::untextured:
        return SoQtViewer::VIEW_NO_TEXTURE;
    case SceneView::Style::shaded:
        break;
    }
    return SoQtViewer::VIEW_AS_IS;
}

} // namespace

SceneView::SceneView(QWidget* parent)
    : QWidget(parent), top(new SoSeparator), lightModel(new SoLightModel), holder(new SoSeparator),
      overlay(new SoSeparator), normals(new SoSwitch)
{
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* const frame = new QWidget(this);
    layout->addWidget(frame);

    top->ref();
    top->renderCaching = SoSeparator::OFF;
    auto* const content = new SoSeparator;
    content->addChild(lightModel);
    content->addChild(holder);
    lightAll(false);
    top->addChild(content);
    top->addChild(normals);
    top->addChild(overlay);

    viewer = std::make_unique<SoQtExaminerViewer>(frame, "picture", TRUE, SoQtFullViewer::BUILD_NONE);
    viewer->setAnimationEnabled(FALSE);
    viewer->setBackgroundColor(SbColor(0.76f, 0.82f, 0.88f));
    viewer->setTransparencyType(SoGLRenderAction::SORTED_OBJECT_BLEND);
    viewer->setEventCallback(takeEvent, this);
    viewer->setSceneGraph(top);
    viewer->getWidget()->setObjectName(pictureName);
    settled = std::make_unique<SettledPicture>(*viewer);
}

SceneView::~SceneView()
{
    settled.reset();
    viewer->setSceneGraph(nullptr);
    viewer.reset();
    if (selected != nullptr)
        selected->unref();
    top->unref();
}

void SceneView::setScene(SoSeparator* scene, bool keepCamera)
{
    select(nullptr);
    bool const areNormalsShown = normals->whichChild.getValue() == SO_SWITCH_ALL;
    normals->removeAllChildren();
    normals->whichChild = SO_SWITCH_NONE;
    holder->removeAllChildren();
    if (scene != nullptr)
        holder->addChild(scene);
    if (areNormalsShown)
        showNormals(true);
    if (keepCamera && hasCamera)
        return;
    hasCamera = scene != nullptr;
    lookFrom(Side::corner);
}

void SceneView::setStyle(Style style)
{
    viewer->setDrawStyle(SoQtViewer::STILL, drawStyle(style));
    viewer->setDrawStyle(SoQtViewer::INTERACTIVE, SoQtViewer::VIEW_SAME_AS_STILL);
}

void SceneView::lookFrom(Side side)
{
    if (SoCamera* const camera = viewer->getCamera())
        camera->orientation = viewFrom(side);
    frameAll();
}

void SceneView::frameAll()
{
    SbViewportRegion const& region = viewer->getViewportRegion();
    SbBox3f const drawn = DrawnBox::of(holder, region);
    if (!drawn.isEmpty())
        return frame(drawn);
    // Nothing is drawn here, but it may be from elsewhere: levels of detail.
    SoGetBoundingBoxAction action(region);
    action.apply(holder);
    frame(action.getBoundingBox());
}

void SceneView::frame(SoPath* path)
{
    frame(boxOf(path));
}

void SceneView::frame(SbBox3f const& box)
{
    if (SoCamera* const camera = viewer->getCamera(); camera != nullptr && !box.isEmpty())
        CameraFit::fit(*camera, box, viewer->getViewportRegion().getViewportAspectRatio());
}

SbBox3f SceneView::boxOf(SoPath* path) const
{
    return DrawnBox::of(path, viewer->getViewportRegion());
}

void SceneView::select(SoPath* path)
{
    if (path != nullptr)
        path->ref();
    if (selected != nullptr)
        selected->unref();
    selected = path;
    refreshSelection();
}

void SceneView::refreshSelection()
{
    overlay->removeAllChildren();
    SbBox3f const box = selectionBox();
    if (!box.isEmpty())
        overlay->addChild(SelectionBox(box).node());
}

SbBox3f SceneView::selectionBox() const
{
    return selected != nullptr ? boxOf(selected) : SbBox3f();
}

void SceneView::showNormals(bool isShown)
{
    if (isShown && normals->getNumChildren() == 0)
        normals->addChild(NormalLines::make(holder, viewer->getViewportRegion()));
    normals->whichChild = isShown ? SO_SWITCH_ALL : SO_SWITCH_NONE;
}

void SceneView::lightAll(bool areLit)
{
    lightModel->model.setIgnored(!areLit);
    lightModel->setOverride(areLit);
}

QImage SceneView::picture()
{
    viewer->render();
    auto* const widget = qobject_cast<QGLWidget*>(viewer->getGLWidget());
    return widget != nullptr ? widget->grabFrameBuffer() : QImage();
}

QPoint SceneView::pictureOrigin() const
{
    return viewer->getGLWidget()->mapTo(window(), QPoint(0, 0));
}

SbBool SceneView::takeEvent(void* view, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease ||
        event->type() == QEvent::MouseButtonDblClick)
        static_cast<SceneView*>(view)->takeMouseEvent(*static_cast<QMouseEvent*>(event));
    return FALSE; // the viewer takes it as well
}

void SceneView::takeMouseEvent(QMouseEvent const& event)
{
    if (event.button() != Qt::LeftButton)
        return;
    if (event.type() == QEvent::MouseButtonPress) {
        pressedAt = event.pos();
        return;
    }
    if (event.type() == QEvent::MouseButtonRelease &&
        (event.pos() - pressedAt).manhattanLength() > clickSlack)
        return;
    SoPath* const path = pick(event.pos());
    if (path != nullptr)
        path->ref();
    if (event.type() == QEvent::MouseButtonDblClick)
        emit pickedTwice(path);
    else
        emit picked(path);
    if (path != nullptr)
        path->unref();
}

SoPath* SceneView::pick(QPoint const& place) const
{
    SbViewportRegion const& region = viewer->getViewportRegion();
    double const ratio = viewer->getGLWidget()->devicePixelRatioF();
    SoRayPickAction action(region);
    action.setPoint(SbVec2s(static_cast<short>(place.x() * ratio),
                            static_cast<short>(region.getViewportSizePixels()[1] - 1 - place.y() * ratio)));
    action.setRadius(2);
    // The viewer's own root holds the camera, by which the action knows the ray.
    action.apply(viewer->getSceneManager()->getSceneGraph());
    SoPickedPoint const* const point = action.getPickedPoint();
    if (point == nullptr)
        return nullptr;
    SoPath* const whole = point->getPath();
    int const at = whole->findNode(holder);
    if (at < 0 || at + 1 >= whole->getLength())
        return nullptr;
    auto* const path = new SoPath(whole->getNode(at + 1));
    for (int i = at + 2; i < whole->getLength(); ++i)
        path->append(whole->getIndex(i));
    return path;
}
