#pragma once

#include <string>
#include <string_view>

/// Text in colour for a terminal, or as it is.
class Colours
{
public:
    enum class Mode {
        automatic, ///< Where standard output is a terminal, unless NO_COLOR is set.
        always,
        never,
    };

    explicit Colours(Mode mode);

    std::string bold(std::string_view text) const { return in("1", text); }
    std::string dim(std::string_view text) const { return in("2", text); }
    std::string red(std::string_view text) const { return in("31", text); }
    std::string green(std::string_view text) const { return in("32", text); }
    std::string yellow(std::string_view text) const { return in("33", text); }
    std::string blue(std::string_view text) const { return in("34", text); }

private:
    std::string in(char const* code, std::string_view text) const;

    bool isOn;
};
