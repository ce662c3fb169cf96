#include "convert/FltConvertedSwitch.h"

#include "messages/FltWarningMessageConsole.h"
#include "records/FltRecordSwitch.h"

#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoSwitch.h>
#include <cstdlib>
#include <cstring>

namespace
{

constexpr char mark[] = "flt_switch";
constexpr char infoName[] = "SoInfo_child_of_FLT_switch";

bool isInfo(SoNode const* node)
{
    return node->isOfType(SoInfo::getClassTypeId()) && node->getName() == SbName(infoName);
}

bool isChild(SoNode const* node)
{
    return node->isOfType(SoSwitch::getClassTypeId());
}

void notifyNoInfo()
{
    FltWarningMessageConsole::notifyMessage("ERROR ! SoInfo with switch properties not found", 3, true);
}

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

/// How many characters after its first one a number takes. It is one too few for 10, for 100 to 109 and the
/// like, so that their last digit is read again as a number of its own.
int digitsToSkip(long number)
{
    int digits = 0;
    for (; number > 10; number /= 10)
        ++digits;
    return digits;
}

/// The numbers in the text of a switch's masks. A -1 stands after each of the first three; the bits follow.
std::vector<std::int32_t> maskNumbersOf(char const* text)
{
    std::vector<std::int32_t> numbers;
    int counter = 0;
    for (; *text != '\0'; ++text) {
        if (isDigit(*text)) {
            long const number = std::strtol(text, nullptr, 10);
            numbers.push_back(static_cast<std::int32_t>(number));
            text += digitsToSkip(number);
            ++counter;
        } else if (!numbers.empty() && counter <= 3 && numbers.back() != -1) {
            numbers.push_back(-1);
        }
    }
    return numbers;
}

/// No list of a switch's numbers, and no number of children, comes near this.
constexpr std::int64_t farFromAnyList = std::int64_t(1) << 40;

/// Whether a switch draws its next child, when it has so many of them. What would be read outside the list is
/// off.
bool isBitSet(std::vector<std::int32_t> const& numbers, int switchChildren)
{
    if (numbers.size() < 3)
        return false;
    std::int64_t const currentMask = numbers[0];
    std::int64_t const wordsPerMask = numbers[2];
    std::int64_t const words = (currentMask + 1) * wordsPerMask;
    if (std::abs(words) > farFromAnyList)
        return false;
    std::int64_t const index = words * 32 + 5 - switchChildren;
    return index >= 0 && index < static_cast<std::int64_t>(numbers.size()) &&
           numbers[static_cast<std::size_t>(index)] == 1;
}

} // namespace

bool FltConvertedSwitch::isMarked(std::string const& name)
{
    return name.find(mark) != std::string::npos;
}

std::string FltConvertedSwitch::markedName(std::string const& name)
{
    return name + "_(" + mark + ")";
}

void FltConvertedSwitch::fillInfo(SoInfo& info, FltRecordSwitch const& record)
{
    info.setName(infoName);
    std::string text = "Current Mask:" + std::to_string(record.indexOfCurrentMask) +
                       " NumberOfWordsPerMask:" + std::to_string(record.numberOf32BitWordsPerMask) +
                       " numberOfMasks:" + std::to_string(record.numberOfMasks) + " Switch Masks:";
    for (int word = 0; word < record.maskWordCount; ++word) {
        auto const bits = static_cast<std::uint32_t>(record.masks[static_cast<std::size_t>(word)]);
        for (int bit = 31; bit >= 0; --bit)
            text += (bits >> bit & 1) != 0 ? "1 " : "0 ";
        text += "  ";
    }
    info.string = text.c_str();
}

SoInfo* FltConvertedSwitch::findInfo(SoGroup const* group)
{
    for (int i = 0; i < group->getNumChildren(); ++i)
        if (isInfo(group->getChild(i)))
            return static_cast<SoInfo*>(group->getChild(i));
    notifyNoInfo();
    return nullptr;
}

int FltConvertedSwitch::countChildren(SoGroup const* group)
{
    int count = 0;
    for (int i = 0; i < group->getNumChildren(); ++i)
        count += isChild(group->getChild(i)) ? 1 : 0;
    return count;
}

bool FltConvertedSwitch::drawsNextChild(SoGroup const* group)
{
    for (; childrenSeen < group->getNumChildren(); ++childrenSeen) {
        SoNode* const child = group->getChild(childrenSeen);
        if (isChild(child))
            ++switchChildren;
        else if (info == nullptr && isInfo(child)) {
            info = static_cast<SoInfo*>(child);
            maskNumbers = maskNumbersOf(info->string.getValue().getString());
        }
    }
    if (info == nullptr)
        notifyNoInfo();
    return isBitSet(maskNumbers, switchChildren);
}
