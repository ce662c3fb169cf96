#include "view/Measure.h"

#include "view/OverlayLines.h"

#include <Inventor/nodes/SoSeparator.h>
#include <QObject>

namespace
{

constexpr float lineWidth = 3;

QString numberOf(double value)
{
    return QString::number(value, 'g', 6);
}

} // namespace

Measure::Measure(SoSeparator& lines) : lines(lines)
{
    lines.ref();
}

Measure::~Measure()
{
    lines.unref();
}

QString Measure::take(SbVec3f const& place, QString const& unit)
{
    if (!begin) {
        clear();
        begin = place;
        return QObject::tr("Click the second place to measure to.");
    }
    SbVec3f const way = place - *begin;
    lines.removeAllChildren();
    lines.addChild(OverlayLines::make({*begin, place}, SbColor(0.85f, 0, 0.6f), lineWidth));
    begin.reset();
    return QObject::tr("Distance %1 %2  (x %3  y %4  z %5)")
        .arg(numberOf(static_cast<double>(way.length())), unit, numberOf(static_cast<double>(way[0])),
             numberOf(static_cast<double>(way[1])), numberOf(static_cast<double>(way[2])));
}

void Measure::clear()
{
    begin.reset();
    lines.removeAllChildren();
}
