#include "visual/FltSwitchReader.h"

#include "model/FltRecordEntries.h"
#include "records/FltOpcode.h"
#include "records/FltRecordIndexedString.h"
#include "records/FltRecordSwitch.h"

#include <algorithm>

namespace
{

std::vector<std::uint32_t> masksOf(FltRecordView const& record, FltRecordSwitchHead const& head,
                                   std::size_t wordsPerMask)
{
    FltRecordSwitchHead::MaskWord word;
    FltRecordEntries const words(record, word, head);
    auto const masks = static_cast<std::size_t>(std::max(head.numberOfMasks, 0));
    std::vector<std::uint32_t> all;
    for (std::size_t i = 0; wordsPerMask > 0 && i < words.countWhole() && i / wordsPerMask < masks; ++i) {
        words.decode(i, word);
        all.push_back(word.bits);
    }
    return all;
}

} // namespace

FltVisualSwitch FltSwitchReader::read(FltModelTree const& tree, FltModelTree::Number number)
{
    FltRecordView const& record = tree.recordOf(number);
    FltRecordSwitchHead head(record.classLength());
    record.decodeFieldsTo(head);
    FltVisualSwitch choice;
    choice.currentMask = head.indexOfCurrentMask;
    choice.wordsPerMask = static_cast<std::size_t>(std::max(head.numberOf32BitWordsPerMask, 0));
    choice.masks = masksOf(record, head, choice.wordsPerMask);
    choice.maskNames.resize(static_cast<std::size_t>(choice.getMaskCount()));
    FltRecordView const* const end = tree.ancillaryEnd(number);
    for (FltRecordView const* each = tree.ancillaryBegin(number); each != end; ++each) {
        if (each->opcode != FltOpcode::indexedString)
            continue;
        FltDecoded<FltRecordIndexedString> const name(*each);
        if (name.index < choice.maskNames.size())
            choice.maskNames[name.index] = name.text.get();
    }
    return choice;
}
