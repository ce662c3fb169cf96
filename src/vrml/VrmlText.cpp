#include "vrml/VrmlText.h"

#include "messages/FltText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace
{

constexpr std::size_t longestNumber = 32;

/// A deeply nested scene would be mostly blanks otherwise.
constexpr std::size_t deepestIndent = 20;

constexpr std::size_t mostWaiting = 1U << 16;
constexpr int mostItemsOfLine = 8;

template <class Number>
Number readable(Number number)
{
    Number const most = std::numeric_limits<Number>::max();
    return std::isnan(number) ? 0 : std::clamp(number, -most, most) + 0; // without the sign of -0
}

std::string quoted(std::string const& text)
{
    std::string result = "\"";
    for (char const character : FltText::utf8(text)) {
        if (character == '"' || character == '\\')
            result += '\\';
        bool const isControl = static_cast<unsigned char>(character) < ' ' || character == '\x7f';
        result += isControl ? ' ' : character;
    }
    return result + '"';
}

} // namespace

VrmlText::VrmlText(FILE* stream) : stream(stream)
{
    put("#VRML V2.0 utf8\n");
}

VrmlText::~VrmlText()
{
    std::fwrite(waiting.data(), 1, waiting.size(), stream);
}

/// Begins a line with the blanks that it needs.
void VrmlText::line()
{
    if (waiting.size() > mostWaiting) {
        std::fwrite(waiting.data(), 1, waiting.size(), stream);
        waiting.clear();
    }
    waiting.append(std::min(depth, deepestIndent), ' ');
    itemsOfLine = 0;
}

void VrmlText::put(std::string_view words)
{
    waiting += words;
}

void VrmlText::put(float number)
{
    char digits[longestNumber];
    char const* const end = std::to_chars(digits, digits + sizeof digits, readable(number)).ptr;
    put({digits, static_cast<std::size_t>(end - digits)});
}

void VrmlText::put(double number)
{
    char digits[longestNumber];
    char const* const end = std::to_chars(digits, digits + sizeof digits, readable(number)).ptr;
    put({digits, static_cast<std::size_t>(end - digits)});
}

void VrmlText::begin(std::string_view head, std::string const& name)
{
    line();
    std::size_t const type = head.rfind(' ') + 1; // the whole head if it has no blank
    put(head.substr(0, type));
    if (!name.empty())
        put("DEF " + name + ' ');
    put(head.substr(type));
    put(" {\n");
    ++depth;
}

void VrmlText::end()
{
    --depth;
    line();
    put("}\n");
}

void VrmlText::beginList(std::string_view field)
{
    line();
    put(field);
    put(" [\n");
    ++depth;
    itemsOfLine = mostItemsOfLine;
}

void VrmlText::endList()
{
    --depth;
    if (!waiting.empty() && waiting.back() != '\n')
        put("\n");
    line();
    put("]\n");
}

void VrmlText::field(std::string_view name, std::string_view words)
{
    line();
    put(name);
    put(" ");
    put(words);
    put("\n");
}

void VrmlText::field(std::string_view name, std::initializer_list<double> numbers)
{
    line();
    put(name);
    for (double const number : numbers) {
        put(" ");
        put(number);
    }
    put("\n");
}

void VrmlText::field(std::string_view name, std::initializer_list<float> numbers)
{
    line();
    put(name);
    for (float const number : numbers) {
        put(" ");
        put(number);
    }
    put("\n");
}

void VrmlText::texts(std::string_view name, std::vector<std::string> const& values)
{
    beginList(name);
    for (std::string const& value : values) {
        line();
        put(quoted(value));
        put("\n");
    }
    endList();
}

/// Comes between two items of a list.
void VrmlText::separate()
{
    if (itemsOfLine++ < mostItemsOfLine) {
        put(", ");
        return;
    }
    if (!waiting.empty() && waiting.back() != '\n')
        put(",\n");
    line();
    itemsOfLine = 1;
}

void VrmlText::item(double number)
{
    separate();
    put(number);
}

void VrmlText::item(std::int32_t number)
{
    separate();
    char digits[longestNumber];
    char const* const end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    put({digits, static_cast<std::size_t>(end - digits)});
}

void VrmlText::item(SbVec2f const& value)
{
    separate();
    put(value[0]);
    put(" ");
    put(value[1]);
}

void VrmlText::item(SbVec3f const& value)
{
    separate();
    put(value[0]);
    put(" ");
    put(value[1]);
    put(" ");
    put(value[2]);
}

void VrmlText::image(std::string_view name, PicturePixels const& pixels)
{
    constexpr char digits[] = "0123456789ABCDEF";
    field(name, std::to_string(pixels.width) + ' ' + std::to_string(pixels.height) + ' ' +
                    std::to_string(pixels.components));
    auto const components = static_cast<std::size_t>(pixels.components);
    itemsOfLine = mostItemsOfLine;
    for (std::size_t i = 0; i < pixels.bytes.size(); ++i) {
        if (i % components == 0) {
            separate();
            put("0x");
        }
        waiting += digits[pixels.bytes[i] >> 4];
        waiting += digits[pixels.bytes[i] & 0xf];
    }
    put("\n");
}
