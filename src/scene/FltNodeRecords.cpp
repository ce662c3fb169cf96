#include "scene/FltNodeRecords.h"

#include <Inventor/fields/SoField.h>
#include <Inventor/fields/SoFieldContainer.h>
#include <Inventor/lists/SoAuditorList.h>
#include <algorithm>
#include <functional>
#include <set>

namespace
{

using Entry = std::pair<SoNode const*, FltVisualNode::Record>;

bool isBefore(Entry const& entry, SoNode const* node)
{
    return std::less<>()(entry.first, node);
}

/// The node that holds another one as its child or in a field; null for whatever else wants to know of
/// changes.
SoNode const* holderOf(SoAuditorList const& auditors, int index)
{
    if (auditors.getType(index) == SoNotRec::PARENT)
        return static_cast<SoNode const*>(auditors.getObject(index));
    if (auditors.getType(index) != SoNotRec::FIELD)
        return nullptr;
    SoFieldContainer const* const container =
        static_cast<SoField const*>(auditors.getObject(index))->getContainer();
    return container != nullptr && container->isOfType(SoNode::getClassTypeId())
               ? static_cast<SoNode const*>(container)
               : nullptr;
}

} // namespace

void FltNodeRecords::add(SoNode const* node, FltVisualNode::Record const& record)
{
    if (record.offset != FltVisualNode::Record::none)
        records.emplace_back(node, record);
}

void FltNodeRecords::finish()
{
    std::sort(records.begin(), records.end(),
              [](Entry const& left, Entry const& right) { return isBefore(left, right.first); });
    records.shrink_to_fit();
}

FltVisualNode::Record const* FltNodeRecords::ownOf(SoNode const* node) const
{
    auto const place = std::lower_bound(records.begin(), records.end(), node, isBefore);
    return place != records.end() && place->first == node ? &place->second : nullptr;
}

/// Looks upwards in steps, so that the nearest one is found first.
FltVisualNode::Record const* FltNodeRecords::find(SoNode const& node) const
{
    std::vector<SoNode const*> level{&node};
    std::set<SoNode const*> seen{&node};
    while (!level.empty()) {
        std::vector<SoNode const*> above;
        for (SoNode const* const each : level) {
            if (FltVisualNode::Record const* const own = ownOf(each))
                return own;
            SoAuditorList const& auditors = each->getAuditors();
            for (int i = 0; i < auditors.getLength(); ++i) {
                SoNode const* const holder = holderOf(auditors, i);
                if (holder != nullptr && seen.insert(holder).second)
                    above.push_back(holder);
            }
        }
        level = std::move(above);
    }
    return nullptr;
}
