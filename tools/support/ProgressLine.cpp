#include "support/ProgressLine.h"

#include "messages/FltText.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

namespace
{

using namespace std::chrono_literals;

constexpr auto firstShown = 1s;
constexpr auto betweenShows = 100ms;

bool isTerminal()
{
    char const* const terminal = std::getenv("TERM");
    return ::isatty(STDERR_FILENO) != 0 && terminal != nullptr && std::string_view(terminal) != "dumb";
}

std::size_t widthOfTerminal()
{
    constexpr std::size_t usual = 80;
    struct winsize size = {};
    return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 1 ? size.ws_col : usual;
}

bool beginsCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

/// A text in UTF-8 that isn't wider than this. A longer one keeps its end, which says how far the work is.
std::string fitted(std::string const& text, std::size_t width)
{
    constexpr std::string_view dots = "...";
    auto const characters =
        static_cast<std::size_t>(std::count_if(text.begin(), text.end(), beginsCharacter));
    if (characters <= width)
        return text;
    std::string const mark(dots.substr(0, width));
    std::size_t lost = characters - (width - mark.size());
    auto const begin = std::find_if(text.begin(), text.end(),
                                    [&](char byte) { return beginsCharacter(byte) && lost-- == 0; });
    return mark + std::string(begin, text.end());
}

} // namespace

ProgressLine::ProgressLine(Start start)
    : isOn(start != Start::never && isTerminal()), next(start == Start::atOnce ? begin : begin + firstShown)
{
}

ProgressLine::~ProgressLine()
{
    clear();
}

void ProgressLine::show(std::string const& text)
{
    Clock::time_point const now = Clock::now();
    if (!isOn || now < next)
        return;
    next = now + betweenShows;
    isShown = true;
    std::string const line = fitted(FltText::printable(text), widthOfTerminal() - 1);
    std::fprintf(stderr, "\r%s\x1b[K", line.c_str());
    std::fflush(stderr);
}

void ProgressLine::clear()
{
    if (!isShown)
        return;
    isShown = false;
    next = Clock::now();
    std::fputs("\r\x1b[K", stderr);
    std::fflush(stderr);
}

double ProgressLine::seconds() const
{
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

std::string ProgressLine::timeLeft(double seconds, double partDone)
{
    constexpr double mostSeconds = 359'999;
    if (!(partDone > 0) || partDone > 1)
        return "";
    double const left = std::round(seconds / partDone * (1 - partDone));
    if (left > mostSeconds)
        return "";
    auto const whole = static_cast<unsigned>(left);
    char text[40];
    if (whole >= 3600)
        std::snprintf(text, sizeof text, "about %u:%02u:%02u left", whole / 3600, whole / 60 % 60,
                      whole % 60);
    else
        std::snprintf(text, sizeof text, "about %u:%02u left", whole / 60, whole % 60);
    return text;
}
