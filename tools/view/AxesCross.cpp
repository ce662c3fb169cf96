#include "view/AxesCross.h"

#include <Inventor/SbVec3f.h>
#include <QPainter>
#include <algorithm>

namespace
{

constexpr int side = 48; ///< Pixels.
constexpr double axisLength = 16;
constexpr double letterPlace = 21;

} // namespace

AxesCross::AxesCross(QWidget* parent) : QWidget(parent), turn(SbRotation::identity())
{
    setObjectName("axes");
    setAccessibleName(tr("Axes"));
    setToolTip(tr("Where x, y and z point to"));
    setFixedSize(side, side);
}

void AxesCross::show(SbRotation const& newTurn)
{
    turn = newTurn;
    update();
}

std::array<QPointF, 3> AxesCross::endsOf(SbRotation const& turn)
{
    std::array<QPointF, 3> ends;
    for (int axis = 0; axis < 3; ++axis) {
        SbVec3f direction(0, 0, 0);
        direction[axis] = 1;
        turn.inverse().multVec(direction, direction);
        ends[static_cast<std::size_t>(axis)] =
            QPointF(static_cast<double>(direction[0]), -static_cast<double>(direction[1]));
    }
    return ends;
}

void AxesCross::paintEvent(QPaintEvent* /*event*/)
{
    constexpr char letters[] = "xyz";
    bool const isDark = palette().color(QPalette::Window).lightness() < 128;
    std::array<QColor, 3> const colors = {QColor(isDark ? 255 : 200, isDark ? 90 : 0, isDark ? 90 : 0),
                                          QColor(isDark ? 90 : 0, isDark ? 220 : 140, isDark ? 90 : 0),
                                          QColor(isDark ? 120 : 0, isDark ? 160 : 60, isDark ? 255 : 220)};
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPointF const middle(side / 2.0, side / 2.0);
    std::array<QPointF, 3> const ends = endsOf(turn);
    for (std::size_t axis = 0; axis < ends.size(); ++axis) {
        painter.setPen(QPen(colors[axis], 2));
        painter.drawLine(middle, middle + ends[axis] * axisLength);
        QRectF letter(0, 0, 10, 12);
        letter.moveCenter(middle + ends[axis] * letterPlace);
        painter.drawText(letter, Qt::AlignCenter, QString(QLatin1Char(letters[axis])));
    }
}
