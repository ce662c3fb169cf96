#pragma once

#include <QObject>
#include <QTimer>

class SoQtExaminerViewer;

/// Has the picture drawn twice whenever its widget appears, gets another size or is uncovered.
///
/// A driver may learn the size of a window only when it swaps buffers, as the one that draws in software
/// does: the first picture after a change of size is drawn in the size of before, and would stay there until
/// something else happens in the window.
class SettledPicture : public QObject
{
    Q_OBJECT

public:
    /// @param viewer is drawn; it lives longer than this
    explicit SettledPicture(SoQtExaminerViewer& viewer);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void draw();

    SoQtExaminerViewer& viewer;
    QTimer next;
    int picturesDue = 0;
};
