#include "robustness/RandomValues.h"

#include "writer/FltLayouts.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace
{

using Limits = std::numeric_limits<double>;

constexpr double oddNumbersOfAll[] = {Limits::quiet_NaN(),
                                      Limits::infinity(),
                                      -Limits::infinity(),
                                      1e300,
                                      -1e300,
                                      Limits::max(),
                                      std::numeric_limits<float>::max(),
                                      -std::numeric_limits<float>::max(),
                                      1e30,
                                      1e-300,
                                      std::numeric_limits<float>::denorm_min(),
                                      -0.0,
                                      2147483648.0,
                                      0.0};
constexpr double scales[] = {0.001, 0.1, 1, 1, 1, 100, 1e6};
constexpr double wholeNumbersAtLimits[] = {-1, -2, 127, 255, 32767, -32768, 65535, 2147483647, -2147483648.0};
constexpr char const* names[] = {"g1",     "tower",        "flt_switch", "db",  "",        " ",
                                 "a b\nc", "\xc3\xa4\xff", "%s%n",       "../", "\x1b[1m", "<b>&amp;"};

} // namespace

RandomValues::RandomValues(unsigned number) : random(number)
{
    static constexpr unsigned rates[] = {0, 0, 200, 30, 5};
    oddNumbers = oneOf(rates);
}

double RandomValues::number()
{
    if (oddNumbers != 0 && oneIn(oddNumbers))
        return oneOf(oddNumbersOfAll);
    double const size = (below(2001) - 1000.0) / 100;
    return size * oneOf(scales);
}

double RandomValues::wholeNumber(unsigned bits)
{
    if (oneIn(40))
        return oneOf(wholeNumbersAtLimits);
    return oneIn(8) ? below(1U << std::min(bits, 16U)) : below(6);
}

std::string RandomValues::name(std::size_t most)
{
    std::string text = oneOf(names);
    if (oneIn(10))
        text = bytes(below(static_cast<unsigned>(most) + 1));
    return text.substr(0, most);
}

std::string RandomValues::bytes(std::size_t size)
{
    std::string text(size, '\0');
    for (char& byte : text)
        byte = static_cast<char>(below(256));
    return text;
}

FltValue RandomValues::valueOf(FltField const& field)
{
    bool const isOpen = field.count == FltField::rest;
    std::size_t const count = isOpen ? below(24) : static_cast<std::size_t>(field.count);
    if (field.kind == FltKind::chars)
        return name(isOpen ? 300 : count - 1);
    if (field.kind == FltKind::bytes)
        return bytes(count);
    bool const isFloat = field.kind == FltKind::f32 || field.kind == FltKind::f64;
    std::vector<double> numbers(count);
    for (double& value : numbers)
        value = isFloat ? number() : wholeNumber(8U * static_cast<unsigned>(sizeOf(field.kind)));
    return numbers;
}

FltWriter::Fields RandomValues::fieldsOf(std::string_view record, int revision,
                                         FltWriter::Fields const& given)
{
    auto const& layouts = fltLayouts();
    FltLayout const& layout = *std::find_if(layouts.begin(), layouts.end(),
                                            [&](FltLayout const& each) { return each.name == record; });
    FltWriter::Fields fields;
    for (FltField const& field : layout.fields) {
        if (field.name.empty() || revision < field.fromRevision || revision >= field.belowRevision)
            continue;
        auto const own = std::find_if(given.begin(), given.end(),
                                      [&](auto const& each) { return each.first == field.name; });
        fields.emplace_back(field.name, own != given.end() ? own->second : valueOf(field));
    }
    return fields;
}
