#pragma once

#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>

/// A text, made of one that it is like and of the differences as the program diff tells them.
/// @throw std::runtime_error if they are differences to another text
inline std::string patchedText(std::string const& text, std::string const& differences)
{
    std::istringstream from(text);
    std::istringstream changes(differences);
    std::string result;
    int taken = 0;
    auto const copyUpTo = [&](int last) {
        for (std::string line; taken < last && std::getline(from, line); ++taken)
            result += line + '\n';
    };
    for (std::string line; std::getline(changes, line);) {
        if (line[0] == '>') {
            result += line.substr(2) + '\n';
        } else if (line[0] == '<') {
            std::string gone;
            if (!std::getline(from, gone) || gone != line.substr(2))
                throw std::runtime_error("no line of the text: " + line.substr(2));
            ++taken;
        } else if (line != "---") { // like 5a6,7 or 5,6c5: after line 5, or from line 5 on
            bool const isAfter = line.find('a') != std::string::npos;
            copyUpTo(std::stoi(line) - (isAfter ? 0 : 1));
        }
    }
    copyUpTo(std::numeric_limits<int>::max());
    return result;
}
