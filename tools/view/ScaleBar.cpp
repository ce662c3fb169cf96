#include "view/ScaleBar.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace
{

constexpr int longestBar = 120; ///< Pixels.
constexpr int margin = 6;

} // namespace

ScaleBar::ScaleBar(QWidget* parent) : QWidget(parent)
{
    setObjectName("scaleBar");
    setAccessibleName(tr("Scale"));
    setFixedSize(longestBar + 2 * margin, 36);
}

double ScaleBar::roundLength(double longest)
{
    if (!(longest > 0) || !std::isfinite(longest))
        return 0;
    double const power = std::pow(10, std::floor(std::log10(longest)));
    for (int const factor : {5, 2})
        if (factor * power <= longest)
            return factor * power;
    return power;
}

void ScaleBar::show(double length, QString const& unit)
{
    lengthOfPixel = length;
    unitName = unit;
    setToolTip(tr("In the middle of the picture, this is %1 long").arg(text()));
    update();
}

QString ScaleBar::text() const
{
    double const length = roundLength(lengthOfPixel * longestBar);
    return length > 0 ? (QString::number(length) + " " + unitName).trimmed() : QString();
}

void ScaleBar::paintEvent(QPaintEvent* /*event*/)
{
    QString const words = text();
    if (words.isEmpty())
        return;
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    int const end =
        margin + static_cast<int>(std::lround(roundLength(lengthOfPixel * longestBar) / lengthOfPixel));
    int const line = height() - margin;
    painter.drawLine(margin, line, end, line);
    painter.drawLine(margin, line - 4, margin, line);
    painter.drawLine(end, line - 4, end, line);
    painter.drawText(QRect(margin, 0, width() - margin, line - 4), Qt::AlignLeft | Qt::AlignBottom, words);
}
