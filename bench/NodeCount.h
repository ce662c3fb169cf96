#pragma once

#include <Inventor/SoType.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoNode.h>

/// What a traversal of a scene meets.
namespace NodeCount
{

/// How many nodes of a type, each as often as it is met.
inline int of(SoType type, SoNode* root)
{
    SoSearchAction search;
    search.setType(type);
    search.setInterest(SoSearchAction::ALL);
    search.setSearchingAll(TRUE);
    search.apply(root);
    return search.getPaths().getLength();
}

} // namespace NodeCount
