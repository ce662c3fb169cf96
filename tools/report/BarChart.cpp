#include "report/BarChart.h"

#include "report/SvgText.h"

#include <algorithm>

namespace
{

constexpr double width = 640, height = 160, roomAbove = 18, roomBelow = 20;

std::string rectangle(double x, double y, double wide, double high)
{
    return "<rect x=\"" + SvgText::number(x) + "\" y=\"" + SvgText::number(y) + "\" width=\"" +
           SvgText::number(wide) + "\" height=\"" + SvgText::number(high) + "\">";
}

std::string label(double x, double y, std::string const& text)
{
    return "<text x=\"" + SvgText::number(x) + "\" y=\"" + SvgText::number(y) + "\">" +
           SvgText::escaped(text) + "</text>";
}

} // namespace

std::string BarChart::svg() const
{
    constexpr std::size_t mostLabels = 16;
    constexpr double gap = 0.15;
    double most = 0;
    for (Bar const& bar : bars)
        most = std::max(most, bar.value);
    double const step = width / static_cast<double>(std::max<std::size_t>(bars.size(), 1));
    std::string svg = "<figure><figcaption>" + SvgText::escaped(title) +
                      "</figcaption><svg class=\"bars\" viewBox=\"0 0 " + SvgText::number(width) + " " +
                      SvgText::number(roomAbove + height + roomBelow) + "\" role=\"img\" aria-label=\"" +
                      SvgText::escaped(title) + "\">\n";
    for (std::size_t i = 0; i < bars.size(); ++i) {
        Bar const& bar = bars[i];
        double const tall = most > 0 ? bar.value / most * height : 0;
        double const x = static_cast<double>(i) * step;
        svg += rectangle(x + step * gap / 2, roomAbove + height - tall, step * (1 - gap), tall) + "<title>" +
               SvgText::escaped(bar.name + ": " + bar.text) + "</title></rect>";
        if (bars.size() <= mostLabels) {
            if (bar.value > 0)
                svg += label(x + step / 2, roomAbove + height - tall - 4, bar.text);
            svg += label(x + step / 2, roomAbove + height + roomBelow - 5, bar.name);
        }
        svg += "\n";
    }
    return svg + "</svg></figure>\n";
}
