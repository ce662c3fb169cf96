#include "visual/FltSwitchReader.h"

#include "records/FltOpcode.h"

#include <algorithm>

namespace
{

/// Where the words of the masks begin.
constexpr std::size_t switchHeadSize = 28;

} // namespace

FltVisualSwitch FltSwitchReader::read(FltModelTree const& tree, FltModelTree::Number number)
{
    FltRecordView const& record = tree.recordOf(number);
    FltVisualSwitch choice;
    choice.currentMask = record.int32At(16);
    std::size_t const words = record.size > switchHeadSize ? (record.size - switchHeadSize) / 4 : 0;
    choice.wordsPerMask = static_cast<std::size_t>(std::max(record.int32At(24), 0));
    std::size_t const masks = static_cast<std::size_t>(std::max(record.int32At(20), 0));
    for (std::size_t i = 0; i < words && (choice.wordsPerMask > 0 && i / choice.wordsPerMask < masks); ++i)
        choice.masks.push_back(record.word32At(switchHeadSize + 4 * i));
    choice.maskNames.resize(static_cast<std::size_t>(choice.getMaskCount()));
    FltRecordView const* const end = tree.ancillaryEnd(number);
    for (FltRecordView const* each = tree.ancillaryBegin(number); each != end; ++each) {
        if (each->opcode != FltOpcode::indexedString)
            continue;
        std::size_t const mask = each->word32At(4);
        if (mask < choice.maskNames.size())
            choice.maskNames[mask] = each->textAt(8);
    }
    return choice;
}
