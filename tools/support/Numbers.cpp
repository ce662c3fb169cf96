#include "support/Numbers.h"

#include <cstdio>

std::string Numbers::grouped(std::uint64_t number)
{
    std::string text = std::to_string(number);
    for (std::size_t place = text.size(); place > 3;) {
        place -= 3;
        text.insert(place, ",");
    }
    return text;
}

std::string Numbers::bytes(std::uint64_t number)
{
    static constexpr char const* units[] = {"bytes", "kB", "MB", "GB", "TB", "PB", "EB"};
    auto size = static_cast<double>(number);
    std::size_t unit = 0;
    for (; size >= 1000 && unit < 6; ++unit)
        size /= 1000;
    char text[32];
    std::snprintf(text, sizeof text, unit == 0 ? "%.0f %s" : "%.1f %s", size, units[unit]);
    return text;
}

std::string Numbers::plain(double number)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", number);
    return text;
}

std::string Numbers::counted(std::uint64_t number, std::string const& one, std::string const& several)
{
    return grouped(number) + " " + (number == 1 ? one : several);
}
