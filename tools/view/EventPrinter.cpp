#include "view/EventPrinter.h"

#include "view/SceneTreeModel.h"
#include "view/ShownText.h"

#include <QApplication>
#include <QTimer>
#include <QWidget>
#include <cstdio>

void EventPrinter::print(QString const& line) const
{
    if (!isPrinting)
        return;
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

void EventPrinter::printSelection(SceneTreeModel const& model, QModelIndex const& index,
                                  std::string const& database) const
{
    std::optional<FltRecordPlace> const record = model.record(index);
    QString const kind = index.sibling(index.row(), SceneTreeModel::kindColumn).data().toString();
    QString place = record ? "\t" + QString::number(record->offset) : QString();
    if (record && record->file != database)
        place += "\t" + ShownText::printable(QString::fromStdString(record->file));
    print("selected " + ShownText::printable(model.address(index)) + "\t" + kind + place);
}

void EventPrinter::printBox(SbBox3f const& box) const
{
    if (box.isEmpty())
        return;
    SbVec3f const& low = box.getMin();
    SbVec3f const& high = box.getMax();
    print(QString("box %1 %2 %3  %4 %5 %6")
              .arg(low[0])
              .arg(low[1])
              .arg(low[2])
              .arg(high[0])
              .arg(high[1])
              .arg(high[2]));
}

void EventPrinter::printWidgetsSoon() const
{
    constexpr int untilLaidOut = 200; // milliseconds
    if (isPrintingWidgets)
        QTimer::singleShot(untilLaidOut, &window, [this] { printWidgets(); });
}

void EventPrinter::printWidgets() const
{
    for (QWidget const* widget : QApplication::allWidgets()) {
        if (widget->objectName().isEmpty() || !widget->isVisible())
            continue;
        QPoint const corner = widget->mapToGlobal(QPoint(0, 0));
        print(QString("widget %1\t%2 %3 %4 %5")
                  .arg(widget->objectName())
                  .arg(corner.x())
                  .arg(corner.y())
                  .arg(widget->width())
                  .arg(widget->height()));
    }
    print("widgets end");
}
