#include "report/Duration.h"

#include "support/Numbers.h"

#include <cmath>
#include <cstdint>

namespace
{

/// Two digits, or all of a whole number.
std::string withTwoDigits(double number)
{
    return Numbers::plain(number < 10 ? std::round(number * 10) / 10 : std::round(number));
}

} // namespace

std::string Duration::text(double seconds)
{
    constexpr double longest = 1e12;
    constexpr std::uint64_t minute = 60, hour = 3600;
    if (!(seconds >= 0) || seconds > longest)
        return "unknown";
    if (seconds < 0.9995)
        return withTwoDigits(seconds * 1000) + " ms";
    if (seconds < static_cast<double>(minute))
        return withTwoDigits(seconds) + " s";
    auto const whole = static_cast<std::uint64_t>(std::llround(seconds));
    if (whole < hour)
        return std::to_string(whole / minute) + " min " + std::to_string(whole % minute) + " s";
    return Numbers::grouped(whole / hour) + " h " + std::to_string(whole % hour / minute) + " min";
}
