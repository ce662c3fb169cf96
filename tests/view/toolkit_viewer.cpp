// Shows a file in the toolkit's own viewer, as any program does that knows nothing of OpenFlight, saves what
// is seen and prints the box around it.
//
//     toolkit_viewer FILE OUT.ppm

#include <Inventor/Qt/SoQt.h>
#include <Inventor/Qt/viewers/SoQtExaminerViewer.h>
#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoSeparator.h>
#include <QApplication>
#include <QGLWidget>
#include <cstdio>

namespace
{

SoSeparator* sceneOf(char const* path)
{
    SoInput input;
    return input.openFile(path) ? SoDB::readAll(&input) : nullptr;
}

} // namespace

int main(int argc, char** argv)
{
    QWidget* const window = SoQt::init(argc, argv, argv[0]);
    SoSeparator* const root = argc == 3 ? sceneOf(argv[1]) : nullptr;
    if (root == nullptr)
        return 1; // the toolkit has said why
    root->ref();
    bool isSaved = false;
    {
        SoQtExaminerViewer viewer(window);
        viewer.setSceneGraph(root);
        viewer.setBackgroundColor(SbColor(0, 0, 1));
        viewer.setDecoration(FALSE);
        window->resize(400, 400);
        viewer.show();
        SoQt::show(window);
        for (int i = 0; i < 20; ++i)
            QApplication::processEvents(QEventLoop::AllEvents, 20);
        viewer.viewAll();
        viewer.render();
        isSaved = static_cast<QGLWidget*>(viewer.getGLWidget())->grabFrameBuffer().save(argv[2]);
        SoGetBoundingBoxAction box(viewer.getViewportRegion());
        box.apply(root);
        SbVec3f const size = box.getBoundingBox().getSize();
        std::printf("%.4f %.4f %.4f\n", size[0], size[1], size[2]);
    }
    root->unref();
    SoQt::done();
    return isSaved ? 0 : 1;
}
