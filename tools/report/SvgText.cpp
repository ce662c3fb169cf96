#include "report/SvgText.h"

#include "support/Numbers.h"

#include "messages/FltText.h"

#include <cmath>

std::string SvgText::escaped(std::string_view text)
{
    std::string safe;
    for (char const character : FltText::printable(text)) {
        switch (character) {
        case '&':
            safe += "&amp;";
            break;
        case '<':
            safe += "&lt;";
            break;
        case '>':
            safe += "&gt;";
            break;
        case '"':
            safe += "&quot;";
            break;
        case '\'':
            safe += "&#39;";
            break;
        default:
            safe += character;
        }
    }
    return safe;
}

std::string SvgText::number(double value)
{
    constexpr double digits = 100;
    return Numbers::plain(std::round(value * digits) / digits + 0.0);
}
