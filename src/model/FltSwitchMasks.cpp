#include "model/FltSwitchMasks.h"

#include "model/FltRecordEntries.h"
#include "records/FltRecordSwitch.h"

#include <algorithm>

FltSwitchMasks::FltSwitchMasks(FltRecordView const& record)
{
    FltRecordSwitchHead head(record.classLength());
    record.decodeFieldsTo(head);
    currentMask = head.indexOfCurrentMask;
    maskCount = head.numberOfMasks;
    wordsPerMask = head.numberOf32BitWordsPerMask;
    if (wordsPerMask <= 0)
        return;
    FltRecordSwitchHead::MaskWord word;
    FltRecordEntries const entries(record, word, head);
    auto const masks = static_cast<std::size_t>(std::max(maskCount, 0));
    for (std::size_t i = 0; i < entries.countWhole() && i / static_cast<std::size_t>(wordsPerMask) < masks;
         ++i) {
        entries.decode(i, word);
        words.push_back(word.bits);
    }
}
