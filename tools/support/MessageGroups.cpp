#include "support/MessageGroups.h"

#include <map>
#include <string>
#include <tuple>

namespace
{

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

} // namespace

std::vector<MessageGroups::Group> MessageGroups::of(std::vector<FltMessage> const& messages)
{
    std::vector<Group> groups;
    std::map<std::tuple<FltMessage::Level, std::string, std::string>, std::size_t> positions;
    for (FltMessage const& message : messages) {
        auto const [known, isNew] =
            positions.try_emplace({message.level, message.file, withoutNumbers(message.text)}, groups.size());
        if (isNew)
            groups.emplace_back();
        groups[known->second].push_back(message);
    }
    return groups;
}

FltMessage MessageGroups::summaryOf(Group const& group)
{
    FltMessage summary = group.front();
    summary.count = 0;
    for (FltMessage const& message : group)
        summary.count += message.count;
    return summary;
}
