#pragma once

#include <Inventor/nodes/SoNode.h>

/// Gives back what references a node gets while this object lives. A conversion takes one of a root for
/// its caller with each header; where the root belongs to somebody already, that is one too many.
class SoReferencesGivenBack
{
public:
    /// @param node may be null
    explicit SoReferencesGivenBack(SoNode* node)
        : node(node), before(node != nullptr ? node->getRefCount() : 0)
    {
    }
    ~SoReferencesGivenBack()
    {
        while (node != nullptr && node->getRefCount() > before)
            node->unrefNoDelete();
    }

    SoReferencesGivenBack(SoReferencesGivenBack const&) = delete;
    SoReferencesGivenBack& operator=(SoReferencesGivenBack const&) = delete;

private:
    SoNode* node;
    int before;
};
