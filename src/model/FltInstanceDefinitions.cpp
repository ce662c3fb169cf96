#include "model/FltInstanceDefinitions.h"

#include "records/FltOpcode.h"
#include "records/FltRecordControl.h"

#include <algorithm>
#include <iterator>

using Number = FltModelTree::Number;

FltInstanceDefinitions::FltInstanceDefinitions(FltModelTree const& tree) : tree(tree)
{
    for (Number number = 1; number < tree.getCount(); ++number) {
        FltRecordView const& record = tree.recordOf(number);
        if (record.opcode == FltOpcode::instanceDefinition)
            definitions[numberIn(record)].push_back(number);
    }
}

Number FltInstanceDefinitions::find(Number reference) const
{
    auto const found = definitions.find(numberIn(tree.recordOf(reference)));
    if (found == definitions.end())
        return FltModelTree::none;
    std::vector<Number> const& numbers = found->second;
    auto const after = std::upper_bound(numbers.begin(), numbers.end(), reference);
    return after == numbers.begin() ? numbers.front() : *std::prev(after);
}

int FltInstanceDefinitions::numberIn(FltRecordView const& record)
{
    return FltDecoded<FltRecordInstanceReference>(record).instanceDefinitionNumber; // both have one layout
}
