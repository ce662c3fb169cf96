#include "visual/FltSwitchReader.h"

#include "model/FltSwitchMasks.h"
#include "records/FltOpcode.h"
#include "records/FltRecordIndexedString.h"

#include <algorithm>
#include <utility>

FltVisualSwitch FltSwitchReader::read(FltModelTree const& tree, FltModelTree::Number number)
{
    FltSwitchMasks masks(tree.recordOf(number));
    FltVisualSwitch choice;
    choice.currentMask = masks.currentMask;
    choice.wordsPerMask = static_cast<std::size_t>(std::max(masks.wordsPerMask, 0));
    choice.masks = std::move(masks.words);
    choice.maskNames.resize(static_cast<std::size_t>(choice.getMaskCount()));
    for (FltRecordView const& each : tree.ancillaries(number)) {
        if (each.opcode != FltOpcode::indexedString)
            continue;
        FltDecoded<FltRecordIndexedString> const name(each);
        if (name.index < choice.maskNames.size())
            choice.maskNames[name.index] = name.text.get();
    }
    return choice;
}
