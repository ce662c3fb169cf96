#include "support/ProgramHelp.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace
{

constexpr std::size_t textWidth = 78;

/// A paragraph in lines of at most textWidth characters, the first of which follows what stands there
/// already.
std::string wrapped(std::string_view text, std::size_t indent, std::size_t column)
{
    std::string lines;
    std::istringstream words{std::string(text)};
    bool isFirst = true;
    for (std::string word; words >> word; isFirst = false) {
        if (!isFirst && column + 1 + word.size() > textWidth) {
            lines += "\n" + std::string(indent, ' ');
            column = indent;
        } else if (!isFirst) {
            lines += " ";
            ++column;
        }
        lines += word;
        column += word.size();
    }
    return lines + "\n";
}

/// "-o, --output FILE" or "--tree[=DEPTH]".
std::string headOf(ProgramOption const& option)
{
    std::string head;
    for (std::string const& name : option.names)
        head += (head.empty() ? "" : ", ") + name;
    if (!option.value.empty())
        head += option.isValueOptional ? "[=" + option.value + "]" : " " + option.value;
    return head;
}

std::string descriptionOf(ProgramOption const& option)
{
    std::string choices;
    for (std::string const& choice : option.choices)
        choices += (choices.empty() ? " One of: " : ", ") + choice;
    return option.description + (choices.empty() ? "" : choices + ".");
}

/// One entry of a list: what it is about, then its explanation from a column on.
std::string entry(std::string const& head, std::string const& explanation, std::size_t column)
{
    std::string text = "  " + head;
    if (text.size() + 2 > column)
        text += "\n" + std::string(column, ' ');
    else
        text.resize(column, ' ');
    return text + wrapped(explanation, column, column);
}

/// A text that troff shows as it is.
std::string roff(std::string_view text)
{
    std::string escaped;
    for (char const character : text) {
        if (character == '\\')
            escaped += "\\e";
        else if (character == '-')
            escaped += "\\-";
        else if (character == '\'')
            escaped += "\\(aq";
        else
            escaped += character;
    }
    return escaped;
}

std::string upper(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char character) { return static_cast<char>(std::toupper(character)); });
    return text;
}

/// A text between apostrophes for a shell.
std::string quoted(std::string_view text)
{
    std::string result = "'";
    for (char const character : text)
        result += character == '\'' ? std::string("'\\''") : std::string(1, character);
    return result + "'";
}

std::string joined(std::vector<std::string> const& words, std::string const& separator)
{
    std::string text;
    for (std::string const& word : words)
        text += (text.empty() ? "" : separator) + word;
    return text;
}

} // namespace

std::string ProgramHelp::text() const
{
    std::ostringstream help;
    help << description.name << ": " << description.summary << "\n\nExamples:\n";
    std::size_t column = 0;
    for (ProgramExample const& example : description.examples)
        column = std::max(column, example.command.size() + 4);
    for (ProgramExample const& example : description.examples)
        help << entry(example.command, example.purpose, std::min<std::size_t>(column, 46));
    help << "\nUsage:\n  " << description.name << " [OPTION]... " << description.arguments
         << "\n\nOptions:\n";
    for (ProgramOption const& option : options)
        help << entry(headOf(option), descriptionOf(option), 26);
    for (std::string const& paragraph : description.paragraphs)
        help << "\n" << wrapped(paragraph, 0, 0);
    help << "\nExit codes:\n";
    for (ExitCodeRow const& row : exitCodeTable)
        if (row.code <= description.highestExitCode)
            help << entry(std::to_string(static_cast<int>(row.code)), std::string(row.meaning), 6);
    return help.str();
}

std::string ProgramHelp::manPage(std::string_view version) const
{
    std::ostringstream page;
    page << ".TH " << upper(description.name) << " 1 \"\" \"VelloReader " << version
         << "\" \"User Commands\"\n";
    page << ".SH NAME\n" << description.name << " \\- " << roff(description.summary) << "\n";
    page << ".SH SYNOPSIS\n.B " << description.name << "\n[\\fIOPTION\\fR]...\n\\fI"
         << roff(description.arguments) << "\\fR\n";
    page << ".SH EXAMPLES\n";
    for (ProgramExample const& example : description.examples)
        page << ".TP\n.B " << roff(example.command) << "\n" << roff(example.purpose) << "\n";
    page << ".SH DESCRIPTION\n";
    for (std::string const& paragraph : description.paragraphs)
        page << ".PP\n" << roff(paragraph) << "\n";
    page << ".SH OPTIONS\n";
    for (ProgramOption const& option : options)
        page << ".TP\n.B " << roff(headOf(option)) << "\n" << roff(descriptionOf(option)) << "\n";
    if (!description.keys.empty())
        page << ".SH KEYS AND MOUSE\n";
    for (ProgramKey const& key : description.keys)
        page << ".TP\n.B " << roff(key.keys) << "\n" << roff(key.purpose) << "\n";
    page << ".SH EXIT STATUS\n";
    for (ExitCodeRow const& row : exitCodeTable)
        if (row.code <= description.highestExitCode)
            page << ".TP\n.B " << static_cast<int>(row.code) << "\n" << roff(row.meaning) << "\n";
    page << ".SH ENVIRONMENT\n.TP\n.B NO_COLOR\nIf it is set and not empty, nothing is coloured.\n";
    page << ".SH SEE ALSO\n";
    for (std::size_t i = 0; i < description.seeAlso.size(); ++i)
        page << ".BR " << description.seeAlso[i] << " (1)"
             << (i + 1 < description.seeAlso.size() ? ",\n" : "\n");
    return page.str();
}

std::string ProgramHelp::completion(std::string_view shell) const
{
    return shell == "bash" ? bash() : shell == "zsh" ? zsh() : shell == "fish" ? fish() : "";
}

std::string ProgramHelp::bash() const
{
    std::ostringstream script;
    std::string const function = "_" + description.name;
    script << "# Completion of " << description.name << " for bash.\n"
           << function << "()\n{\n"
           << "    local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}\n"
           << "    if [[ $current == = ]]; then current=; fi\n"
           << "    if [[ $before == = ]]; then before=${COMP_WORDS[COMP_CWORD-2]}; fi\n"
           << "    COMPREPLY=()\n    case $before in\n";
    std::string all;
    for (ProgramOption const& option : options) {
        all += (all.empty() ? "" : " ") + joined(option.names, " ");
        if (option.value.empty() || option.isValueOptional)
            continue;
        script << "    " << joined(option.names, "|") << ")\n        ";
        if (!option.choices.empty())
            script << "mapfile -t COMPREPLY < <(compgen -W " << quoted(joined(option.choices, " "))
                   << " -- \"$current\")\n";
        else if (option.fileEnding == "/")
            script << "mapfile -t COMPREPLY < <(compgen -d -- \"$current\")\n";
        else if (!option.fileEnding.empty())
            script << "mapfile -t COMPREPLY < <(compgen -f -- \"$current\")\n";
        else
            script << ":\n";
        script << "        return\n        ;;\n";
    }
    script
        << "    esac\n"
        << "    if [[ $current == -* ]]; then\n"
        << "        mapfile -t COMPREPLY < <(compgen -W " << quoted(all) << " -- \"$current\")\n"
        << "    else\n"
        << "        mapfile -t COMPREPLY < <(compgen -f -X '!*.[fF][lL][tT]' -- \"$current\"; compgen -d -- "
           "\"$current\")\n"
        << "    fi\n}\n"
        << "complete -o filenames -F " << function << " " << description.name << "\n";
    return script.str();
}

std::string ProgramHelp::zsh() const
{
    std::ostringstream script;
    script << "#compdef " << description.name << "\n_arguments -s -S \\\n";
    for (ProgramOption const& option : options) {
        std::string explanation;
        for (char const character : option.description) {
            if (character == '[' || character == ']' || character == ':' || character == '\\')
                explanation += '\\';
            explanation += character;
        }
        std::string action;
        if (!option.value.empty())
            action = (option.isValueOptional ? "::" : ":") + option.value + ":" +
                     (!option.choices.empty()      ? "(" + joined(option.choices, " ") + ")"
                      : option.fileEnding == "/"   ? "_files -/"
                      : !option.fileEnding.empty() ? "_files"
                                                   : " ");
        for (std::string const& name : option.names) {
            std::string const equals = option.isValueOptional                    ? "=-"
                                       : !option.value.empty() && name[1] == '-' ? "="
                                                                                 : "";
            std::string line = "*";
            line.append(name).append(equals).append("[").append(explanation).append("]").append(action);
            script << "  " << quoted(line) << " \\\n";
        }
    }
    script << "  '*:database:_files -g \"*.(#i)flt(-.)\"'\n";
    return script.str();
}

std::string ProgramHelp::fish() const
{
    std::ostringstream script;
    script << "# Completion of " << description.name << " for fish.\n"
           << "complete -c " << description.name << " -k -x -a '(__fish_complete_suffix .flt)'\n";
    for (ProgramOption const& option : options) {
        script << "complete -c " << description.name;
        for (std::string const& name : option.names)
            script << (name[1] == '-' ? " -l " + name.substr(2) : " -s " + name.substr(1));
        if (!option.choices.empty())
            script << (option.isValueOptional ? "" : " -x") << " -a " << quoted(joined(option.choices, " "));
        else if (!option.value.empty() && !option.isValueOptional)
            script << (option.fileEnding == "/"    ? " -x -a '(__fish_complete_directories)'"
                       : option.fileEnding.empty() ? " -x"
                                                   : " -r -F");
        script << " -d " << quoted(option.description) << "\n";
    }
    return script.str();
}
