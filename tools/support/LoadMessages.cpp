#include "support/LoadMessages.h"

#include <algorithm>
#include <map>
#include <string>
#include <tuple>

namespace
{

/// A message in one line.
std::string lineOf(FltMessage const& message)
{
    std::string line = message.file.empty() ? message.text : message.file + ": " + message.text;
    if (message.offset >= 0)
        line += " (record with opcode " + std::to_string(message.opcode) + " at byte offset " +
                std::to_string(message.offset) + ")";
    if (message.count > 1)
        line += " (" + std::to_string(message.count) + " times)";
    return line;
}

std::string listOf(std::vector<std::string> const& words)
{
    std::string list;
    for (std::string const& word : words)
        list += (list.empty() ? "" : ", ") + word;
    return list;
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

/// A text without the numbers that stand by themselves, which differ from case to case. Those in names stay.
std::string withoutNumbers(std::string const& text)
{
    std::string rest;
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::size_t end = i + (text[i] == '-' ? 1 : 0);
        while (end < text.size() && isDigit(text[end]))
            ++end;
        bool const isNumber = end > i && isDigit(text[end - 1]) && (i == 0 || text[i - 1] == ' ') &&
                              (end == text.size() || text[end] == ' ' || text[end] == ',');
        if (isNumber)
            i = end - 1;
        else
            rest += text[i];
    }
    return rest;
}

/// The messages of one cause in a file as one: the first of them, with how many they are.
std::vector<FltMessage> grouped(std::vector<FltMessage> const& messages)
{
    std::vector<FltMessage> groups;
    std::map<std::tuple<FltMessage::Level, std::string, std::string>, std::size_t> positions;
    for (FltMessage const& message : messages) {
        auto const [known, isNew] =
            positions.try_emplace({message.level, message.file, withoutNumbers(message.text)}, groups.size());
        if (isNew)
            groups.push_back(message);
        else
            groups[known->second].count += message.count;
    }
    return groups;
}

} // namespace

void LoadMessages::show(std::vector<FltMessage> const& all, std::vector<FltTexture> const& textures) const
{
    constexpr std::size_t mostShown = 20;
    std::vector<FltMessage> const messages = program.isVerbose() ? all : grouped(all);
    std::size_t const shown = program.isVerbose() ? messages.size() : std::min(messages.size(), mostShown);
    for (std::size_t i = 0; i < shown; ++i)
        if (messages[i].level == FltMessage::Level::error)
            program.error(lineOf(messages[i]));
        else
            program.warn(lineOf(messages[i]));
    if (shown < messages.size())
        program.warn(std::to_string(messages.size() - shown) + " more messages left out; -v shows all");
    for (FltTexture const& texture : textures)
        if (!texture.tried.empty())
            program.detail(texture.database + ": texture " + texture.name + " was looked for as " +
                           listOf(texture.tried));
}
