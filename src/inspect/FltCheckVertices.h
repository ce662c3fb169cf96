#pragma once

#include "inspect/FltCheckFamily.h"
#include "inspect/FltCheckedModel.h"
#include "inspect/FltTextTransfer.h"

#include <vector>

/// The vertex palette, and what names its vertices.
class FltCheckVertices : private FltCheckFamily
{
public:
    FltCheckVertices(FltCheckedModel const& checked, FltFindingList& findings)
        : FltCheckFamily(checked.inventory, findings), checked(checked)
    {
    }

    void check();

private:
    void takeLists();
    void takeOffset(std::int64_t offset, FltModelTree::Number list);
    void checkUses();
    void checkLength();

    FltCheckedModel const& checked;
    FltTextTransfer const transfer{inventory};
    std::vector<bool> isUsed; ///< By vertex of the palette.
    bool hasLostOffset = false;
};
