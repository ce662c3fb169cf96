#include "view/SettledPicture.h"

#include <Inventor/Qt/viewers/SoQtExaminerViewer.h>
#include <QEvent>
#include <QWidget>
#include <QWindow>

namespace
{

/// One in the size of before, and one in the new size.
constexpr int picturesToSettle = 2;

} // namespace

SettledPicture::SettledPicture(SoQtExaminerViewer& viewer) : viewer(viewer)
{
    next.setSingleShot(true);
    connect(&next, &QTimer::timeout, this, &SettledPicture::draw);
    // The events of the native window tell what the server has done, those of the widget what is wanted.
    viewer.getGLWidget()->windowHandle()->installEventFilter(this);
}

bool SettledPicture::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Expose || event->type() == QEvent::Resize) {
        picturesDue = picturesToSettle;
        next.start(0);
    }
    return QObject::eventFilter(watched, event);
}

void SettledPicture::draw()
{
    if (!viewer.isVisible())
        return;
    viewer.render();
    if (--picturesDue > 0)
        next.start(0);
}
