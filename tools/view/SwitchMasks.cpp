#include "view/SwitchMasks.h"

#include "view/Visibility.h"

#include <Inventor/misc/SoChildList.h>
#include <Inventor/nodes/SoSwitch.h>
#include <nlohmann/json.hpp>

namespace
{

constexpr int bitsPerWord = 32;

} // namespace

SwitchMasks::SwitchMasks(nlohmann::ordered_json const& fields)
    : currentMask(fields.value("indexOfCurrentMask", 0)),
      wordsPerMask(fields.value("numberOf32BitWordsPerMask", 0))
{
    if (auto const masks = fields.find("masks"); masks != fields.end())
        for (auto const& word : *masks)
            words.push_back(static_cast<std::uint32_t>(word.get<std::int64_t>()));
}

int SwitchMasks::count() const
{
    return wordsPerMask > 0 ? static_cast<int>(words.size()) / wordsPerMask : 0;
}

bool SwitchMasks::shows(int mask, int child) const
{
    if (mask < 0 || mask >= count() || child < 0 || child >= wordsPerMask * bitsPerWord)
        return false;
    auto const word = static_cast<std::size_t>(mask) * static_cast<std::size_t>(wordsPerMask) +
                      static_cast<std::size_t>(child / bitsPerWord);
    return (words[word] >> (child % bitsPerWord) & 1) != 0;
}

std::vector<SoSwitch*> SwitchMasks::childrenOf(SoNode const& node)
{
    std::vector<SoSwitch*> switches;
    SoChildList const* const children = node.getChildren();
    for (int i = 0; children != nullptr && i < children->getLength(); ++i) {
        SoNode* const child = Visibility::child(const_cast<SoNode*>(&node), i);
        if (child->isOfType(SoSwitch::getClassTypeId()))
            switches.push_back(static_cast<SoSwitch*>(child));
    }
    return switches;
}
