#include "shot/ContactSheet.h"

#include "shot/TextLines.h"

#include "messages/FltText.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr int gap = 12;       ///< Pixels between pictures, and around them.
constexpr int captionGap = 4; ///< Pixels between a picture and its caption.
constexpr int captionHeight = captionGap + TextLines::height;
constexpr int inset = 8; ///< Pixels between the edge of a place and a text in it.

} // namespace

int ContactSheet::Layout::columnCount() const
{
    int const square = static_cast<int>(std::ceil(std::sqrt(static_cast<double>(count))));
    return std::max(1, std::min(columns > 0 ? columns : square, count));
}

long long ContactSheet::Layout::sheetWidth() const
{
    return gap + static_cast<long long>(columnCount()) * (width + gap);
}

long long ContactSheet::Layout::sheetHeight() const
{
    long long const rows = (count + columnCount() - 1) / columnCount();
    return gap + rows * (height + captionHeight + gap);
}

ContactSheet::ContactSheet(Layout const& layout)
    : layout(layout), sheet(static_cast<int>(layout.sheetWidth()), static_cast<int>(layout.sheetHeight()),
                            layout.isTransparent ? 4 : 3)
{
    if (!layout.isTransparent)
        fill({0, 0}, sheet.width, sheet.height, {250, 250, 250});
}

void ContactSheet::add(Picture const& picture, std::string const& name)
{
    Place const place = nextPlace();
    copy(picture, place);
    caption(name, place);
}

void ContactSheet::addProblem(std::string const& why, std::string const& name)
{
    Place const place = nextPlace();
    fill(place, layout.width, layout.height, {228, 228, 230});
    int const room = layout.width - 2 * inset;
    int const lines = (layout.height - 2 * inset) / TextLines::height;
    if (room > 0 && lines > 0) {
        std::vector<std::string> const text =
            TextLines::wrapped(FltText::printable(why), room, static_cast<std::size_t>(lines));
        int const textHeight = static_cast<int>(text.size()) * TextLines::height;
        write(text, {place.x + inset, place.y + (layout.height - textHeight) / 2}, room, {160, 30, 30});
    }
    caption(name, place);
}

/// Without paper the letters have to be read on whatever comes behind them.
void ContactSheet::caption(std::string const& text, Place place)
{
    Ink const ink = layout.isTransparent ? Ink{128, 128, 128} : Ink{40, 44, 52};
    write({TextLines::shortened(FltText::printable(text), layout.width)},
          {place.x, place.y + layout.height + captionGap}, layout.width, ink);
}

ContactSheet::Place ContactSheet::nextPlace()
{
    int const column = used % layout.columnCount();
    int const row = used / layout.columnCount();
    ++used;
    return {gap + column * (layout.width + gap), gap + row * (layout.height + captionHeight + gap)};
}

void ContactSheet::fill(Place place, int width, int height, Ink color)
{
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            unsigned char* const pixel = sheet.at(place.x + x, place.y + y);
            pixel[0] = color.red;
            pixel[1] = color.green;
            pixel[2] = color.blue;
            if (sheet.channels == 4)
                pixel[3] = 255;
        }
}

void ContactSheet::copy(Picture const& picture, Place place)
{
    for (int y = 0; y < picture.height; ++y)
        std::copy_n(picture.at(0, y), picture.width * picture.channels, sheet.at(place.x, place.y + y));
}

/// The ink lies on the paper, or on nothing, as thick as the letters are black.
void ContactSheet::write(std::vector<std::string> const& lines, Place place, int width, Ink ink)
{
    Picture const text = TextLines::draw(lines, width, true);
    unsigned char const inks[] = {ink.red, ink.green, ink.blue};
    for (int y = 0; y < text.height; ++y)
        for (int x = 0; x < text.width; ++x) {
            int const thickness = 255 - text.at(x, y)[0];
            if (thickness == 0)
                continue;
            unsigned char* const pixel = sheet.at(place.x + x, place.y + y);
            bool const isOnNothing = sheet.channels == 4 && pixel[3] == 0;
            for (int channel = 0; channel < 3; ++channel) {
                int const paper = isOnNothing ? inks[channel] : pixel[channel];
                pixel[channel] = static_cast<unsigned char>(
                    (paper * (255 - thickness) + inks[channel] * thickness + 127) / 255);
            }
            if (isOnNothing)
                pixel[3] = static_cast<unsigned char>(thickness);
        }
}
