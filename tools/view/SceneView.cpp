#include "view/SceneView.h"

#include "view/CameraFit.h"
#include "view/DrawnBox.h"
#include "view/NormalLines.h"
#include "view/SelectionBox.h"
#include "view/SettledPicture.h"
#include "view/WalkControl.h"

#include <Inventor/Qt/SoQt.h>
#include <Inventor/Qt/viewers/SoQtExaminerViewer.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoRayPickAction.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/sensors/SoNodeSensor.h>
#include <QGLWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace
{

constexpr int clickSlack = 4; ///< Pixels that a click may drag.
QColor const skyColor(194, 209, 224);

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
    case SceneView::Side::back:
        return viewFrom(0, 0);
    case SceneView::Side::left:
        return viewFrom(270, 0);
    case SceneView::Side::bottom:
        return viewFrom(180, -90);
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
    : QWidget(parent), top(new SoSeparator), contentRoot(new SoSeparator), markRoot(new SoSeparator),
      lightModel(new SoLightModel), holder(new SoSeparator), overlay(new SoSeparator), normals(new SoSwitch)
{
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* const frame = new QWidget(this);
    layout->addWidget(frame);

    top->ref();
    top->renderCaching = SoSeparator::OFF;
    contentRoot->addChild(lightModel);
    contentRoot->addChild(holder);
    lightAll(false);
    top->addChild(contentRoot);
    top->addChild(markRoot);
    top->addChild(normals);
    top->addChild(overlay);

    viewer = std::make_unique<SoQtExaminerViewer>(frame, "picture", TRUE, SoQtFullViewer::BUILD_NONE);
    viewer->setAnimationEnabled(FALSE);
    setBackground(skyColor);
    viewer->setTransparencyType(SoGLRenderAction::SORTED_OBJECT_BLEND);
    viewer->setEventCallback(takeEvent, this);
    viewer->setSceneGraph(top);
    viewer->getWidget()->setObjectName(pictureName);
    settled = std::make_unique<SettledPicture>(*viewer);
    cameraSensor = std::make_unique<SoNodeSensor>(
        [](void* self, SoSensor* /*sensor*/) { emit static_cast<SceneView*>(self)->cameraChanged(); }, this);
    cameraSensor->attach(camera());
}

SceneView::~SceneView()
{
    settled.reset();
    cameraSensor.reset();
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
    markRoot->removeAllChildren();
    if (keepCamera && hasCamera) {
        drawnBox = measured();
        return;
    }
    hasCamera = scene != nullptr;
    lookFrom(Side::corner);
}

void SceneView::setStyle(Style newStyle)
{
    style = newStyle;
    viewer->setDrawStyle(SoQtViewer::STILL, drawStyle(style));
    viewer->setDrawStyle(SoQtViewer::INTERACTIVE, SoQtViewer::VIEW_SAME_AS_STILL);
}

SoCamera* SceneView::camera() const
{
    return viewer->getCamera();
}

void SceneView::lookFrom(Side side)
{
    camera()->orientation = viewFrom(side);
    frameAll();
}

void SceneView::frameAll()
{
    drawnBox = measured();
    frame(drawnBox);
}

SbBox3f SceneView::measured()
{
    SbViewportRegion const& region = viewer->getViewportRegion();
    SbBox3f const drawn = DrawnBox::of(holder, region);
    if (!drawn.isEmpty())
        return drawn;
    // Nothing is drawn here, but it may be from elsewhere: levels of detail.
    SoGetBoundingBoxAction action(region);
    action.apply(holder);
    return action.getBoundingBox();
}

void SceneView::frame(SoPath* path)
{
    frame(boxOf(path));
}

void SceneView::frame(SbBox3f const& box)
{
    if (!box.isEmpty())
        CameraFit::fit(*camera(), box, viewer->getViewportRegion().getViewportAspectRatio());
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

void SceneView::setHeadlight(bool isOn)
{
    viewer->setHeadlight(isOn ? TRUE : FALSE);
}

void SceneView::setBackground(QColor const& color)
{
    viewer->setBackgroundColor(SbColor(static_cast<float>(color.redF()), static_cast<float>(color.greenF()),
                                       static_cast<float>(color.blueF())));
}

void SceneView::setFieldOfView(double degrees)
{
    if (!camera()->isOfType(SoPerspectiveCamera::getClassTypeId()))
        return;
    auto& seeing = static_cast<SoPerspectiveCamera&>(*camera());
    float const angle = radians(static_cast<float>(degrees));
    float const before = seeing.focalDistance.getValue();
    float const after = before * std::tan(seeing.heightAngle.getValue() / 2) / std::tan(angle / 2);
    SbVec3f ahead;
    seeing.orientation.getValue().multVec(SbVec3f(0, 0, -1), ahead);
    seeing.position = seeing.position.getValue() + ahead * (before - after);
    seeing.focalDistance = after;
    seeing.heightAngle = angle;
}

SceneView::Look SceneView::look() const
{
    SbVec3f ahead;
    turn().multVec(SbVec3f(0, 0, -1), ahead);
    SbVec3f const eye = camera()->position.getValue();
    float angle = radians(45);
    if (camera()->isOfType(SoPerspectiveCamera::getClassTypeId()))
        angle = static_cast<SoPerspectiveCamera const&>(*camera()).heightAngle.getValue();
    SbVec2s const pixels = viewer->getViewportRegion().getViewportSizePixels();
    SbColor const behind = viewer->getBackgroundColor();
    QColor background;
    background.setRgbF(static_cast<qreal>(behind[0]), static_cast<qreal>(behind[1]),
                       static_cast<qreal>(behind[2]));
    return {eye,
            eye + ahead * camera()->focalDistance.getValue(),
            static_cast<double>(angle) * 180 / M_PI,
            QSize(pixels[0], pixels[1]),
            background,
            style};
}

SbRotation SceneView::turn() const
{
    return camera()->orientation.getValue();
}

double SceneView::lengthOfPixel() const
{
    SbViewportRegion const& region = viewer->getViewportRegion();
    if (!camera()->isOfType(SoPerspectiveCamera::getClassTypeId()))
        return 0;
    auto const& seeing = static_cast<SoPerspectiveCamera const&>(*camera());
    // The toolkit fits the angle to the smaller side of the picture.
    SbVec2s const pixels = region.getViewportSizePixels();
    double const side = std::min(pixels[0], pixels[1]) / viewer->getGLWidget()->devicePixelRatioF();
    double const length = 2 * static_cast<double>(seeing.focalDistance.getValue()) *
                          std::tan(static_cast<double>(seeing.heightAngle.getValue()) / 2);
    return side > 0 ? length / side : 0;
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

SbBool SceneView::takeEvent(void* self, QEvent* event)
{
    auto& view = *static_cast<SceneView*>(self);
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease ||
        event->type() == QEvent::MouseButtonDblClick)
        view.takeMouseEvent(*static_cast<QMouseEvent*>(event));
    return view.isWalking && view.takeWalk(*event) ? TRUE : FALSE; // the viewer takes it as well
}

/// @return whether the event is one of walking, which the viewer doesn't get
bool SceneView::takeWalk(QEvent& event)
{
    if (event.type() == QEvent::KeyPress)
        return WalkControl::takeKey(static_cast<QKeyEvent&>(event), *camera(),
                                    (drawnBox.getMax() - drawnBox.getMin()).length());
    if (event.type() != QEvent::MouseMove && event.type() != QEvent::MouseButtonPress &&
        event.type() != QEvent::MouseButtonRelease)
        return false;
    auto const& mouse = static_cast<QMouseEvent&>(event);
    if (event.type() == QEvent::MouseMove && (mouse.buttons() & Qt::LeftButton) != 0)
        WalkControl::look(mouse.pos() - lookedFrom, *camera());
    lookedFrom = mouse.pos();
    return mouse.button() == Qt::LeftButton || (mouse.buttons() & Qt::LeftButton) != 0;
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

/// Tells the place, too.
SoPath* SceneView::pick(QPoint const& place)
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
    emit pointed(point->getPoint());
    SoPath* const whole = point->getPath();
    int const at = whole->findNode(holder);
    if (at < 0 || at + 1 >= whole->getLength())
        return nullptr;
    auto* const path = new SoPath(whole->getNode(at + 1));
    for (int i = at + 2; i < whole->getLength(); ++i)
        path->append(whole->getIndex(i));
    return path;
}
