#include "support/LoadMessages.h"

#include "support/MessageGroups.h"

#include <algorithm>
#include <string>

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

/// The messages of one cause in a file as one.
std::vector<FltMessage> grouped(std::vector<FltMessage> const& messages)
{
    std::vector<FltMessage> summaries;
    for (MessageGroups::Group const& group : MessageGroups::of(messages))
        summaries.push_back(MessageGroups::summaryOf(group));
    return summaries;
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
