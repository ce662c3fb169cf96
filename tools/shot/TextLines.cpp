#include "shot/TextLines.h"

#include "shot/Backdrop.h"
#include "shot/SceneDrawing.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/nodes/SoBaseColor.h>
#include <Inventor/nodes/SoFont.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoText2.h>
#include <Inventor/nodes/SoTranslation.h>
#include <algorithm>
#include <cmath>

namespace
{

constexpr float fontSize = 12;
constexpr float belowBaseline = 4; ///< Pixels of a line.
constexpr int longestLine = 2000;  ///< Bytes; longer ones are cut before they are measured.

/// A camera whose unit is a pixel, with the origin in the lower left corner.
SoOrthographicCamera* makeCamera(int width, int height)
{
    auto* camera = new SoOrthographicCamera;
    camera->viewportMapping = SoCamera::LEAVE_ALONE;
    camera->aspectRatio = static_cast<float>(width) / static_cast<float>(height);
    camera->height = static_cast<float>(height);
    camera->position.setValue(static_cast<float>(width) / 2, static_cast<float>(height) / 2, 1);
    camera->nearDistance = 0.5f;
    camera->farDistance = 2;
    return camera;
}

SoSeparator* makeLine(std::string const& line, float x, float y)
{
    auto* separator = new SoSeparator;
    auto* place = new SoTranslation;
    place->translation.setValue(x, y, 0);
    separator->addChild(place);
    auto* text = new SoText2;
    text->string = line.c_str();
    separator->addChild(text);
    return separator;
}

SoNodeRef<SoSeparator> makePage(int width, int height)
{
    SoNodeRef<SoSeparator> page(new SoSeparator);
    SbColor const white(1, 1, 1);
    page->addChild(Backdrop(white, white).makeNodes());
    page->addChild(makeCamera(width, height));
    auto* light = new SoLightModel;
    light->model = SoLightModel::BASE_COLOR;
    page->addChild(light);
    auto* color = new SoBaseColor;
    color->rgb.setValue(0, 0, 0);
    page->addChild(color);
    auto* font = new SoFont;
    font->size = fontSize;
    page->addChild(font);
    return page;
}

/// Moves a line of a picture from the left into the middle: the toolkit takes letters for wider than they
/// are.
void centre(Picture& picture, int top)
{
    constexpr int darkest = 128;
    int right = 0;
    for (int y = top; y < top + TextLines::height; ++y)
        for (int x = right; x < picture.width; ++x)
            if (picture.at(x, y)[0] < darkest)
                right = x + 1;
    int const shift = (picture.width - right) / 2 * picture.channels;
    for (int y = top; y < top + TextLines::height; ++y) {
        unsigned char* const row = picture.at(0, y);
        std::copy_backward(row, row + right * picture.channels, row + right * picture.channels + shift);
        std::fill(row, row + shift, static_cast<unsigned char>(255));
    }
}

/// The beginning of a text, without half a character at its end.
std::string beginningOf(std::string const& text, std::size_t length)
{
    while (length > 0 && length < text.size() && (static_cast<unsigned char>(text[length]) & 0xc0) == 0x80)
        --length;
    return text.substr(0, length);
}

std::string endOf(std::string const& text, std::size_t length)
{
    std::size_t begin = text.size() - std::min(length, text.size());
    while (begin < text.size() && (static_cast<unsigned char>(text[begin]) & 0xc0) == 0x80)
        ++begin;
    return text.substr(begin);
}

} // namespace

int TextLines::widthOf(std::string const& line)
{
    constexpr int page = 1000;
    SoNodeRef<SoSeparator> const nodes(new SoSeparator);
    nodes->addChild(makeCamera(page, page));
    auto* font = new SoFont;
    font->size = fontSize;
    nodes->addChild(font);
    nodes->addChild(makeLine(line, 0, 0));
    SoGetBoundingBoxAction measure{SbViewportRegion(page, page)};
    measure.apply(nodes.get());
    SbBox3f const box = measure.getBoundingBox();
    return box.isEmpty() ? 0 : static_cast<int>(std::ceil(box.getMax()[0]));
}

std::string TextLines::shortened(std::string const& line, int width)
{
    if (line.size() <= longestLine && widthOf(line) <= width)
        return line;
    // Halving finds how many bytes may stay.
    std::size_t fits = 0;
    for (std::size_t tooMany = std::min<std::size_t>(line.size(), longestLine); fits + 1 < tooMany;) {
        std::size_t const middle = (fits + tooMany) / 2;
        std::string const candidate = beginningOf(line, (middle + 1) / 2) + "..." + endOf(line, middle / 2);
        (widthOf(candidate) <= width ? fits : tooMany) = middle;
    }
    return beginningOf(line, (fits + 1) / 2) + "..." + endOf(line, fits / 2);
}

std::vector<std::string> TextLines::wrapped(std::string const& text, int width, std::size_t most)
{
    std::vector<std::string> lines;
    std::string line;
    for (std::size_t begin = 0; begin < text.size() && lines.size() < most;) {
        std::size_t const end = std::min(text.find(' ', begin), text.size());
        std::string const word = text.substr(begin, end - begin);
        std::string longer = line;
        longer.append(line.empty() ? "" : " ").append(word);
        begin = end + 1;
        if (widthOf(beginningOf(longer, longestLine)) <= width) {
            line = longer;
            continue;
        }
        if (!line.empty())
            lines.push_back(line);
        line = shortened(word, width);
    }
    if (!line.empty() && lines.size() < most)
        lines.push_back(line);
    return lines;
}

Picture TextLines::draw(std::vector<std::string> const& lines, int width, bool isCentred)
{
    int const pageHeight = height * static_cast<int>(std::max<std::size_t>(lines.size(), 1));
    SoNodeRef<SoSeparator> const page = makePage(width, pageHeight);
    auto y = static_cast<float>(pageHeight);
    for (std::string const& line : lines) {
        y -= static_cast<float>(height);
        page->addChild(makeLine(line, 0, y + belowBaseline));
    }
    Picture picture = SceneDrawing::drawNodes(page.get(), width, pageHeight, 1);
    for (int top = 0; isCentred && top < pageHeight; top += height)
        centre(picture, top);
    return picture;
}
