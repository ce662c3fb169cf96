#include "toolkit/SoNodeName.h"

#include <Inventor/SbName.h>
#include <Inventor/misc/SoChildList.h>
#include <Inventor/nodes/SoInfo.h>

namespace
{

/// Of the text of the node that holds a whole name.
constexpr std::string_view infoKey = "name ";

/// A name that begins with a character that no name may begin with gets another one before it.
bool isPreceded(std::string_view name)
{
    return !name.empty() && SbName::isBaseNameStartChar(name.front()) == FALSE;
}

/// The name that a node's text holds whole; empty if it is about something else.
std::string_view nameIn(SoNode const& node)
{
    if (!node.isOfType(SoInfo::getClassTypeId()))
        return {};
    SbString const& text = static_cast<SoInfo const&>(node).string.getValue();
    std::string_view const all(text.getString(), static_cast<std::size_t>(text.getLength()));
    return all.substr(0, infoKey.size()) == infoKey ? all.substr(infoKey.size()) : std::string_view();
}

} // namespace

std::string SoNodeName::uncut(std::string_view name)
{
    std::string result;
    result.reserve(name.size() + 1);
    if (isPreceded(name))
        result += '_';
    for (char const character : name)
        result += SbName::isBaseNameChar(character) != FALSE ? character : '_';
    return result;
}

std::string SoNodeName::of(std::string_view name)
{
    return uncut(name.substr(0, longest)).substr(0, longest);
}

SoInfo* SoNodeName::infoOf(std::string_view name)
{
    if (name.size() + (isPreceded(name) ? 1 : 0) <= longest)
        return nullptr;
    std::string text(infoKey);
    text += name;
    auto* const info = new SoInfo;
    info->string = text.c_str();
    return info;
}

std::string SoNodeName::wholeOf(SoNode const& node)
{
    std::string name = node.getName().getString();
    SoChildList const* const children = name.size() == longest ? node.getChildren() : nullptr;
    for (int i = 0; children != nullptr && i < children->getLength(); ++i) {
        std::string_view const whole = nameIn(*(*children)[i]);
        if (whole.size() >= longest && of(whole) == name)
            return std::string(whole);
    }
    return name;
}

void SoNodeName::give(SoNode& node, std::string const& name)
{
    if (name.size() <= mostOfToolkit)
        node.setName(name.c_str());
    else
        node.setName(name.substr(0, mostOfToolkit).c_str());
}
