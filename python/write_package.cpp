// Writes the Python package from its template: where that takes any options, it names those of the loader.
//
//     write_package TEMPLATE OUTPUT

#include "loader/FltLoaderOption.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <string>

namespace
{

using Kind = FltLoaderOption::Kind;

/// The words in quotation marks.
std::string choicesOf(FltLoaderOption const& option)
{
    std::string text;
    for (FltLoaderOption::Word const& word : option.words)
        text += (text.empty() ? "\"" : ", \"") + std::string(word.name) + '"';
    return text;
}

/// An option as an argument of a function: its type and its default.
std::string argumentOf(FltLoaderOption const& option)
{
    std::string const number = option.defaultNumber() ? std::to_string(*option.defaultNumber()) : "None";
    switch (option.kind) {
    case Kind::flag:
        return "bool = " + std::string(number == "1" ? "True" : "False");
    case Kind::word:
        return "Literal[" + choicesOf(option) + "] = \"" + std::string(option.defaultWord().name) + '"';
    case Kind::number:
        return "int | None = " + number;
    case Kind::directory:
        return "Path | None = None";
    case Kind::directories:
        return "Paths = ()";
    case Kind::log:
        break;
    }
    return "Path | Literal[True] | None = None";
}

/// What people need to know to give a value.
std::string helpOf(FltLoaderOption const& option)
{
    std::string help(option.help);
    if (option.kind == Kind::word)
        help += " One of " + choicesOf(option) + ".";
    if (option.kind == Kind::directories)
        help += " There may be several.";
    if (option.kind == Kind::log)
        help += " True is for the latter.";
    return help;
}

/// A text in lines, each after an indent.
std::string wrapped(std::string const& text, std::string const& indent)
{
    constexpr std::size_t width = 110;
    std::string lines;
    std::string line = indent;
    std::size_t begin = 0;
    while (begin < text.size()) {
        std::size_t const end = std::min(text.find(' ', begin), text.size());
        std::string const word = text.substr(begin, end - begin);
        if (line.size() + 1 + word.size() > width) {
            lines += line + '\n';
            line = indent;
        }
        line += (line.size() > indent.size() ? " " : "") + word;
        begin = end + 1;
    }
    return lines + line + '\n';
}

/// What stands in place of a line of the template, for one option; nothing if that line stays.
std::string lineFor(FltLoaderOption const& option, std::string const& line)
{
    std::size_t const indent = line.find_first_not_of(' ');
    if (indent == std::string::npos)
        return "";
    std::string const before(indent, ' ');
    std::string const name(option.name);
    std::string const place = line.substr(indent);
    if (place == "**options: Any,")
        return before + name + ": " + argumentOf(option) + ",\n";
    if (place == "**options,")
        return before + name + "=" + name + ",\n";
    if (place == "**options")
        return before + name + '\n' + wrapped(helpOf(option), before + "    ");
    return "";
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 3)
        return 1;
    std::ifstream input(arguments[1]);
    std::ofstream output(arguments[2]);
    for (std::string line; std::getline(input, line);) {
        std::string lines;
        for (FltLoaderOption const& option : FltLoaderOption::table())
            lines += lineFor(option, line);
        output << (lines.empty() ? line + '\n' : lines);
    }
    output.close();
    if (input.bad() || !output) {
        std::cerr << arguments[2] << ": cannot be written\n";
        return 1;
    }
    return 0;
}
