// A window from which a file can be dragged, as from a file manager.
//
//     drag_source FILE X Y

#include <QApplication>
#include <QDrag>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>

namespace
{

class DragSource : public QLabel
{
public:
    explicit DragSource(QString file) : file(std::move(file)) {}

private:
    void mousePressEvent(QMouseEvent* /*event*/) override
    {
        auto* const data = new QMimeData; // the drag's own
        data->setUrls({QUrl::fromLocalFile(file)});
        auto* const drag = new QDrag(this); // the toolkit's own, once it has begun
        drag->setMimeData(data);
        drag->exec(Qt::CopyAction);
    }

    QString file;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    if (argc != 4)
        return 2;
    DragSource source(argv[1]);
    source.setGeometry(QString(argv[2]).toInt(), QString(argv[3]).toInt(), 100, 100);
    source.show();
    return QApplication::exec();
}
